// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/task_errc.hpp"

#include "internal/error_table.hpp"

namespace nuv::async {

const std::error_category& task_error_category() noexcept {
    static constexpr impl::ErrorRow ROWS[] = {
        {1, "Task timed out", std::errc::timed_out},
        {2, "Task cancelled", std::errc::operation_canceled},
        {3, "Task already running", std::errc::operation_in_progress},
        {4, "Task not running", std::errc::resource_unavailable_try_again},
        {5, "Task is running", std::errc::resource_unavailable_try_again},
        {6, "Task has no continuation", std::errc::operation_not_supported},
        {7, "Task has a continuation", std::errc::operation_not_supported},
        {8, "Task composition invalid", std::errc::operation_not_supported},
    };
    // Not spelled as the timers' text is: programs compare both.
    static const impl::ErrorTable category("Task", ROWS, "(unrecognised error)");
    return category;
}

std::error_code make_error_code(TaskErrc code) noexcept {
    return {static_cast<int>(code), task_error_category()};
}

std::error_condition make_error_condition(TaskErrc code) noexcept {
    return {static_cast<int>(code), task_error_category()};
}

}  // namespace nuv::async
