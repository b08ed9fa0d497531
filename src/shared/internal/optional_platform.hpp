// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>

#include "nuv_platform/clock.h"
#include "nuv_platform/clog.h"

// The platform calls that a platform may leave out. They are weak references in every source of the
// library that makes them, so a source gets them from here alone. platform/CMakeLists.txt names them
// again for the linker.
#pragma weak nuv_clock_monotonic_ns
#pragma weak clogger_get_default_logger
#pragma weak clogger_get_name
#pragma weak clogger_set_default_logger
#pragma weak clogger_set_snprintf_time_func
#pragma weak clogger_show
#pragma weak clogmod_get_clogger
#pragma weak clogmod_get_loglevel
#pragma weak clogmod_get_or_alloc_main
#pragma weak clogmod_set_loglevel

namespace nuv::impl {

/// Calls `function`. Without it does nothing and returns null or 0.
template <typename Result, typename... Parameters, typename... Args>
Result call_if_present(Result (*function)(Parameters...), Args... args) {
    return function != nullptr ? function(args...) : Result();
}

inline std::int64_t monotonic_ns() noexcept {
    if (nuv_clock_monotonic_ns != nullptr) {
        return nuv_clock_monotonic_ns();
    }
    const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
    return now.count();
}

inline clogger* default_logger() noexcept {
    return clogger_get_default_logger != nullptr ? clogger_get_default_logger()
                                                 : clogger_get(nullptr);
}

inline int loglevel(clogmod* module) noexcept {
    if (clogmod_get_loglevel != nullptr) {
        return clogmod_get_loglevel(module);
    }
    return module != nullptr ? CLOGGER_TRACE : -1;
}

}  // namespace nuv::impl
