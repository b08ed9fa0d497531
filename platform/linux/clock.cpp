// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/clock.h"

#include <ctime>

extern "C" int64_t nuv_clock_monotonic_ns(void) {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}
