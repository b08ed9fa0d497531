/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_WATCHDOG_H
#define NUV_PLATFORM_WATCHDOG_H

#include "nuv_platform/export.h"

/**
 * @file
 * The supervisor's watchdog. Where it wants signs of life (on Linux: WATCHDOG_USEC is set, and
 * WATCHDOG_PID is unset or this process), it gets one at half of its interval at the latest for as
 * long as the event loop (csock.h) completes its passes. Without it the calls do nothing. From the
 * thread of the loop.
 */

#ifdef __cplusplus
extern "C" {
#endif

/** Begins; `name` is used where people read. 0: done, or nobody wants it. < 0: the negated errno of
 *  what failed. */
NUV_PLATFORM_EXPORT int watchdog_csock_init(const char* name);
/** A sign of life at once. */
NUV_PLATFORM_EXPORT void watchdog_csock_trigger(void);
/** Ends; no sign of life is sent any more. */
NUV_PLATFORM_EXPORT void watchdog_csock_exit(void);

#ifdef __cplusplus
}
#endif

#endif
