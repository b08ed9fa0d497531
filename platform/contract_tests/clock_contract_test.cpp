// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>

#include "nuv_platform/clock.h"

TEST(ClockContract, ReadingsAreFreshAndNeverGoBack) {
    const std::int64_t first = nuv_clock_monotonic_ns();
    std::int64_t last = first;
    for (int i = 0; i < 1'000'000 && last == first; ++i) {
        const std::int64_t now = nuv_clock_monotonic_ns();
        ASSERT_GE(now, last);
        last = now;
    }
    EXPECT_GT(last, first);
}
