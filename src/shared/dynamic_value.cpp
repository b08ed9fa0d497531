// SPDX-License-Identifier: Apache-2.0
#include "nuv/dynamic_value.hpp"

#include <atomic>
#include <chrono>

#include "internal/steady_clock.hpp"

namespace nuv {

namespace {

std::int64_t system_clock() noexcept {
    using std::chrono::nanoseconds;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<nanoseconds>(now).count();
}

constinit std::atomic<impl::SteadyClock> steady_clock{&system_clock};

}  // namespace

std::int64_t steady_now_ns() noexcept { return steady_clock.load(std::memory_order_relaxed)(); }

impl::SteadyClock impl::replace_steady_clock(SteadyClock clock) noexcept {
    return steady_clock.exchange(clock);
}

}  // namespace nuv
