// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/clock.h"
#include "tests/support/test.hpp"

TEST(Clock, IsTheSteadyClock) {
    const auto steady = [] {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    };
    const auto before = steady();
    const auto reading = nuv_clock_monotonic_ns();
    EXPECT_LE(before, reading);
    EXPECT_LE(reading, steady());
}
