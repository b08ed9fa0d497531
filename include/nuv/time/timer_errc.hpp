// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <system_error>
#include <type_traits>

#include "nuv/export.hpp"

namespace nuv::time {

/// What can go wrong with a timer. Equal to these generic conditions: INVALID_PARAMETER to
/// std::errc::invalid_argument, RESOURCE_PROBLEM to std::errc::device_or_resource_busy.
enum class TimerErrc {
    ALREADY_RUNNING = 1,
    NOT_RUNNING = 2,
    INVALID_PARAMETER = 3,
    INVALID_HANDLE = 4,
    DELETED_HANDLE = 5,
    CHANGED_HANDLE = 6,
    RESOURCE_PROBLEM = 7
};

/// The category of these codes, named "Timer".
NUV_EXPORT const std::error_category& timer_error_category() noexcept;
NUV_EXPORT std::error_code make_error_code(TimerErrc code) noexcept;
NUV_EXPORT std::error_condition make_error_condition(TimerErrc code) noexcept;

}  // namespace nuv::time

template <>
struct std::is_error_code_enum<nuv::time::TimerErrc> : std::true_type {};
