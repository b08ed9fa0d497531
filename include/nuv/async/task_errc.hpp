// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <system_error>
#include <type_traits>

#include "nuv/export.hpp"

namespace nuv::async {

/// What can be wrong with a task, or with what is asked of it. Each is equal to a generic condition:
/// in this order std::errc::timed_out, operation_canceled, operation_in_progress,
/// resource_unavailable_try_again twice, and operation_not_supported for the last three.
enum class TaskErrc {
    TIMED_OUT = 1,
    CANCELLED = 2,
    ALREADY_RUNNING = 3,
    NOT_RUNNING = 4,
    RUNNING = 5,
    NO_CONTINUATION = 6,
    HAS_CONTINUATION = 7,
    COMPOSITION_INVALID = 8
};

/// The category of these codes, named "Task".
NUV_EXPORT const std::error_category& task_error_category() noexcept;
NUV_EXPORT std::error_code make_error_code(TaskErrc code) noexcept;
NUV_EXPORT std::error_condition make_error_condition(TaskErrc code) noexcept;

}  // namespace nuv::async

template <>
struct std::is_error_code_enum<nuv::async::TaskErrc> : std::true_type {};
