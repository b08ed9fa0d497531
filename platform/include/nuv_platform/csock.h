/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_CSOCK_H
#define NUV_PLATFORM_CSOCK_H

#include <stdint.h>

#include "nuv_platform/export.h"

/**
 * @file
 * The event loop of a process: file descriptors with their callbacks, and the wait that calls them.
 * Timers (ctimer.h) run inside the same wait.
 *
 * All calls belong to one thread, the one that waits. Callbacks run inside csock_select_with_msecs()
 * only, one after another; they may call everything here except that function: add and remove any
 * descriptor, their own included, and close it once it is removed. A callback must not throw.
 *
 * | result      | meaning                                                                   |
 * |-------------|---------------------------------------------------------------------------|
 * | 0           | done                                                                      |
 * | `-EINVAL`   | a handle of 0 or one that is not registered; or before csock_init()       |
 * | `-EDEADLK`  | the wait was asked for by one of its callbacks                            |
 * | `-ECHILD`   | in a child made by fork(): the loop stays the parent's                    |
 * | < 0 else    | the negated errno of what failed; nothing has changed                     |
 */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Called with the descriptor and the context of its registration.
 *
 * The result is handed back to the loop. The Linux platform ignores it; what another makes of a value
 * other than 0 is open.
 */
typedef int (*csock_fd_callback)(int fd, void* ctx);

/**
 * Opens the loop. It may be opened more than once; each csock_init() that returned 0 wants a
 * csock_exit(). The last of these drops all registrations; timers stay armed until they are removed.
 */
NUV_PLATFORM_EXPORT int csock_init(void);
NUV_PLATFORM_EXPORT void csock_exit(void);

/**
 * Registers the descriptor `fd`. Returns the handle of the registration, 0 when it failed: no callback
 * given, a negative number, not an open descriptor, one that is registered already, one that the system
 * cannot wait for (regular files), or the loop is not open.
 *
 * - `readable`: there is something to read, or the end of file; called in each pass in which that
 *   is so (level-triggered).
 * - `writable`: called once after registration, and again whenever the descriptor becomes writable
 *   after having been full. In between it may be called without need.
 * - `urgent`: out-of-band data.
 * - `hang_up`: the other end has hung up, or the descriptor has an error pending. Without it these
 *   reach `readable`, else `writable`; with neither, the registration is dropped with a warning.
 *
 * A callback that is NULL is not called. Every callback has to expect to be called with nothing to
 * do. `name` (NULL: none) is copied and used where people read; `flags` is 0; `ctx` is handed to the
 * callbacks. The flags of the descriptor itself do not change.
 *
 * A descriptor is removed before it is closed. When it was not, the next registration of the number
 * takes it over, and the old handle is good for nothing but its removal.
 */
NUV_PLATFORM_EXPORT uint32_t csock_add_fd(int fd, const char* name, csock_fd_callback readable,
                                          csock_fd_callback writable, csock_fd_callback urgent,
                                          csock_fd_callback hang_up, unsigned flags, void* ctx);

/** Ends a registration; none of its callbacks is called any more. Does not close the descriptor. */
NUV_PLATFORM_EXPORT int csock_remove_fd(uint32_t handle);

/** Says that the descriptor is in blocking mode: a callback is called once for each report of the
 *  system, never on the chance that there is more. */
NUV_PLATFORM_EXPORT int csock_fd_blocking(uint32_t handle);

/**
 * One pass: waits until a descriptor is ready or a timer is due, or `msecs` milliseconds have passed
 * (below 0: without limit; 0: not at all), calls what is due and ready, and returns. Waits are rounded
 * up to whole milliseconds. Which timers are due is decided once, after the wait; a timer armed
 * by a callback waits for the next pass. A signal ends the pass.
 */
NUV_PLATFORM_EXPORT int csock_select_with_msecs(int32_t msecs);

#ifdef __cplusplus
}
#endif

#endif
