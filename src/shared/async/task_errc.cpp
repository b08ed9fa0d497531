// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/task_errc.hpp"

#include "internal/error_table.hpp"

namespace nuv::async {

const std::error_category& task_error_category() noexcept {
    static constexpr impl::ErrorRow ROWS[] = {
        {"Task timed out", 1, std::errc::timed_out},
        {"Task cancelled", 2, std::errc::operation_canceled},
        {"Task already running", 3, std::errc::operation_in_progress},
        {"Task not running", 4, std::errc::resource_unavailable_try_again},
        {"Task is running", 5, std::errc::resource_unavailable_try_again},
        {"Task has no continuation", 6, std::errc::operation_not_supported},
        {"Task has a continuation", 7, std::errc::operation_not_supported},
        {"Task composition invalid", 8, std::errc::operation_not_supported},
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
