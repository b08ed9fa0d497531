/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_CLOCK_H
#define NUV_PLATFORM_CLOCK_H

#include <stdint.h>

#include "nuv_platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Reads the monotonic clock, from which every time stamp of the library comes. Each call reads the
 * clock anew: an event loop that keeps the time of its pass does not return that time here. Any
 * thread; neither blocks nor fails.
 *
 * | result | meaning                                                                        |
 * |--------|--------------------------------------------------------------------------------|
 * | any    | nanoseconds since a fixed moment, never less than an earlier call returned; on  |
 * |        | Linux CLOCK_MONOTONIC, so that it compares with `std::chrono::steady_clock`      |
 *
 * Optional: without it the library reads `std::chrono::steady_clock`.
 */
NUV_PLATFORM_EXPORT int64_t nuv_clock_monotonic_ns(void);

#ifdef __cplusplus
}
#endif

#endif
