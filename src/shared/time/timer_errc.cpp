// SPDX-License-Identifier: Apache-2.0
#include "nuv/time/timer_errc.hpp"

#include "internal/error_table.hpp"

namespace nuv::time {

const std::error_category& timer_error_category() noexcept {
    static constexpr impl::ErrorRow ROWS[] = {
        {"Already running", 1},
        {"Not running", 2},
        {"Invalid parameter", 3, std::errc::invalid_argument},
        {"Invalid handle", 4},
        {"Deleted handle", 5},
        {"Changed handle", 6},
        {"Resource problem", 7, std::errc::device_or_resource_busy},
    };
    static const impl::ErrorTable category("Timer", ROWS, "(unrecognized error)");
    return category;
}

std::error_code make_error_code(TimerErrc code) noexcept {
    return {static_cast<int>(code), timer_error_category()};
}

std::error_condition make_error_condition(TimerErrc code) noexcept {
    return {static_cast<int>(code), timer_error_category()};
}

}  // namespace nuv::time
