// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "nuv/export.hpp"

namespace nuv::async {

enum class TaskState : std::uint8_t {
    NEVER_STARTED = 0,
    RUNNING = 1,
    CANCELLED = 2,
    COMPLETE_WITH_VALUE = 3,
    COMPLETE_WITH_EXCEPTION = 4,
    TIMEOUT = 5,
    DELETED = 6
};

/// The enumerator's name, "INVALID" for other values; operator<< writes the same.
NUV_EXPORT std::string task_state_to_string(TaskState state);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, TaskState state);

/// Whether the task has ended, in whatever way.
constexpr bool task_state_is_done(TaskState state) noexcept {
    return state >= TaskState::CANCELLED && state <= TaskState::DELETED;
}

}  // namespace nuv::async
