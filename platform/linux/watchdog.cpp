// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/watchdog.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <system_error>

#include "nuv_platform/clock.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/ctimer.h"
#include "platform/linux/supervisor.hpp"
#include "platform/linux/watchdog.hpp"

namespace nuv::platform {

namespace {

constexpr std::int64_t NS_PER_MS = 1'000'000;
// The pass each second, and that it may be late.
constexpr std::int64_t NEXT_PASS_NS = 1100 * NS_PER_MS;

/// The number in the environment variable, 0 when it is not set or none.
std::int64_t number(const char* variable) noexcept {
    const char* const text = std::getenv(variable);
    std::int64_t value = 0;
    if (text == nullptr) {
        return 0;
    }
    const char* const end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, value);
    return error == std::errc() && stop == end ? value : 0;
}

/// A timer of its own sends each sign of life when half of the interval is over; one that was sent
/// sooner, on the pass that a main loop makes each second, puts it off.
class Watchdog {
public:
    int start(const char* name) noexcept {
        stop();
        const std::int64_t interval_us = number("WATCHDOG_USEC");
        if (interval_us <= 0 || !Supervisor::present() ||
            (std::getenv("WATCHDOG_PID") != nullptr && number("WATCHDOG_PID") != ::getpid())) {
            return 0;
        }
        const int result = supervisor_.open();
        if (result != 0) {
            return result;
        }
        try {
            name_ = name != nullptr ? name : "";
        } catch (const std::bad_alloc&) {
            return -ENOMEM;
        }
        half_ms_ = std::clamp<std::int64_t>(interval_us / 2000, 1,
                                            std::numeric_limits<std::int32_t>::max());
        if (!arm()) {
            stop();
            return -ENOMEM;
        }
        trigger();
        return 0;
    }

    void trigger() noexcept {
        if (!supervisor_.is_open()) {
            return;
        }
        const int result = supervisor_.notify("WATCHDOG=1");
        if (result != 0 && !failed_) {
            clogmod__warn(clogmod_get_or_alloc("watchdog"), "platform/linux/watchdog", __func__,
                          __LINE__, "no sign of life of \"%s\": %s", name_.c_str(),
                          std::strerror(-result));
        }
        failed_ = result != 0;
        last_ns_ = nuv_clock_monotonic_ns();
        arm();
    }

    void ride() noexcept {
        if (!supervisor_.is_open()) {
            return;
        }
        const std::int64_t half_ns = half_ms_ * NS_PER_MS;
        const std::int64_t age = nuv_clock_monotonic_ns() - last_ns_;
        if (age + NEXT_PASS_NS > half_ns && age >= half_ns / 2) {
            trigger();
        }
    }

    void stop() noexcept {
        ctimer_unsetup_internal(&timer_, CTIMER_TYPE_RELATIVE);
        supervisor_.close();
    }

private:
    bool arm() noexcept {
        return ctimer_setup_internal(nullptr, &timer_, CTIMER_TYPE_RELATIVE, 0,
                                     static_cast<std::uint32_t>(half_ms_), 1000, on_timer, this, 0,
                                     0) == 0;
    }

    static void on_timer(ctimerhandle* /*handle*/, void* ctx) {
        static_cast<Watchdog*>(ctx)->trigger();
    }

    std::string name_;
    Supervisor supervisor_;
    std::int64_t half_ms_ = 0;
    std::int64_t last_ns_ = 0;
    ctimerhandle timer_{};
    bool failed_ = false;
};

Watchdog& watchdog() noexcept {
    static Watchdog instance;
    return instance;
}

}  // namespace

void ride_on_second_pass() noexcept { watchdog().ride(); }

}  // namespace nuv::platform

using nuv::platform::watchdog;

extern "C" {

int watchdog_csock_init(const char* name) { return watchdog().start(name); }
void watchdog_csock_trigger(void) { watchdog().trigger(); }
void watchdog_csock_exit(void) { watchdog().stop(); }

}  // extern "C"
