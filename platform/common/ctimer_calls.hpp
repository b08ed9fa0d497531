// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "nuv_platform/ctimer.h"
#include "platform/common/loop.hpp"

/// The functions of ctimer.h over a loop: what they make of their arguments.
namespace nuv::platform {

constexpr int CTIMER_INVALID_PARAMETER = -1;
constexpr int CTIMER_INVALID_HANDLE = -3;

inline int setup_timer(Loop& loop, ctimerhandle* handle, int type, std::uint32_t count,
                       std::uint32_t units_per_second, ctimer_callback_fn callback,
                       void* cbdata) noexcept {
    const bool known_unit = units_per_second == 1 || units_per_second == 10 ||
                            units_per_second == 100 || units_per_second == 1000;
    if (type != CTIMER_TYPE_RELATIVE || !known_unit || callback == nullptr) {
        return CTIMER_INVALID_PARAMETER;
    }
    return loop.arm(handle, count, units_per_second, callback, cbdata);
}

inline int unsetup_timer(Loop& loop, ctimerhandle* handle, int type) noexcept {
    return type == CTIMER_TYPE_RELATIVE ? loop.disarm(handle) : CTIMER_INVALID_HANDLE;
}

inline ctimer_tval to_tval(std::int64_t ns) noexcept {
    return {static_cast<long>(ns / 1'000'000'000), static_cast<long>(ns / 1'000 % 1'000'000)};
}

inline int timer_end(Loop& loop, const ctimerhandle* handle, int type, ctimer_tval* end) noexcept {
    std::int64_t end_ns = -1;
    const int result =
        type == CTIMER_TYPE_RELATIVE ? loop.end(handle, end_ns) : CTIMER_INVALID_HANDLE;
    if (end_ns >= 0) {
        *end = to_tval(end_ns);
    }
    return result;
}

}  // namespace nuv::platform
