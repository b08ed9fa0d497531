/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_CTIMER_H
#define NUV_PLATFORM_CTIMER_H

#include <stdint.h>

#include "nuv_platform/export.h"

/**
 * @file
 * One-shot timers, driven by the wait of the event loop (csock.h): they fire inside it only, on its
 * thread, from which all calls come. A daemon whose start-up takes long waits in between; a daemon
 * that hangs is for its supervisor to end.
 *
 * Time is that of clock.h: changes of the wall clock change nothing, and on Linux the time that the
 * machine sleeps does not count.
 */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The caller's part of a timer. It begins filled with zeros. From arming on until the timer has fired
 * or was removed it has to stay where it is, and its content belongs to the platform.
 */
typedef struct ctimerhandle {
    uint32_t active; /**< 0: not armed. Cleared before the callback is called. */
    uint32_t priv[7];
} ctimerhandle;

/** A point in time, as clock.h counts it. */
typedef struct ctimer_tval {
    long sec;
    long usec; /**< 0 to 999,999 */
} ctimer_tval;

/** May arm the timer again, arm and remove others, and free `handle`. Must not throw. */
typedef void (*ctimer_callback_fn)(ctimerhandle* handle, void* cbdata);

/** The one value of `type`. */
#define CTIMER_TYPE_RELATIVE 2

/**
 * Results of the calls below that return an int.
 *
 * | result | meaning                                                                             |
 * |--------|-------------------------------------------------------------------------------------|
 * | 0      | done                                                                                |
 * | -1     | to arm: `type`, `units_per_second` or the callback is wrong; else: not armed        |
 * | -2     | to arm: no memory; else: the handle was overwritten with zeros while it was armed   |
 * | -3     | `handle` is NULL, or says to be armed and was never; else also: `type` is wrong     |
 * | -4     | the handle is a copy of an armed one; to ask for the end: done nevertheless         |
 */

/**
 * Arms `handle` to call `cb(handle, cbdata)` once, after `count / units_per_second` seconds.
 * `units_per_second` is 1, 10, 100 or 1000. One that is armed is armed anew.
 *
 * A timer fires never early, timers that are due together in the order of their ends, and of their
 * arming when the ends are equal. The time counts from the next wait, or from when the end is asked
 * for before it: a timer that a callback arms counts from the end of that callback at the earliest.
 * 0 fires in the next pass. `base`, `flags`, `arg9` and `arg10` are 0.
 */
NUV_PLATFORM_EXPORT int ctimer_setup_internal(void* base, ctimerhandle* handle, int type, int flags,
                                              uint32_t count, uint32_t units_per_second,
                                              ctimer_callback_fn cb, void* cbdata, int arg9,
                                              int arg10);

/** Disarms; the callback is not called. */
NUV_PLATFORM_EXPORT int ctimer_unsetup_internal(ctimerhandle* handle, int type);

/** Stores when the timer fires, in the past for one that is overdue. Without success `end` stays. */
NUV_PLATFORM_EXPORT int ctimer_endtval_internal(ctimerhandle* handle, int type, ctimer_tval* end);

/** Stores the present time: a reading of the clock of its own. */
NUV_PLATFORM_EXPORT void ctimer_elapsedtval(ctimer_tval* now);

#ifdef __cplusplus
}
#endif

#endif
