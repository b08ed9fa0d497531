/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_DAEMON_H
#define NUV_PLATFORM_DAEMON_H

#include "nuv_platform/export.h"

/**
 * @file
 * From a command to a daemon: the start-up handshake. The process that was started waits until the
 * daemon says that it is ready, or that it failed.
 */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Makes a daemon of this process, as daemon(3) does: `a` other than 0 keeps the working folder
 * instead of going to "/", `b` other than 0 keeps stdin, stdout and stderr instead of putting
 * /dev/null in their place (a logger that writes to stderr alone is mute then). The umask stays.
 *
 * The child returns, and goes on with everything that the caller had: the event loop, its endpoints
 * and log outputs. The parent waits and ends without running destructors, static objects or stdio:
 * with exit status 0 once the child has called daemon_ready(), with 1 when the child called
 * daemon_start_failed(), died, or was silent for 20 s (it is killed then).
 *
 * Under a supervisor (NOTIFY_SOCKET is set) nothing is forked or closed: the supervisor started this
 * process as the daemon.
 *
 * | result | meaning                                                     |
 * |--------|-------------------------------------------------------------|
 * | 0      | this is the daemon                                          |
 * | < 0    | the negated errno of what failed; nothing has changed.      |
 * |        | `-EALREADY`: the answer to an earlier call is still awaited |
 */
NUV_PLATFORM_EXPORT int daemon_start(int a, int b);

/** Reports that the daemon is ready: to the parent that waits, or to the supervisor. Without either
 *  it does nothing. */
NUV_PLATFORM_EXPORT void daemon_ready(void);

/** Reports that the daemon could not start. The caller ends the process. */
NUV_PLATFORM_EXPORT void daemon_start_failed(void);

#ifdef __cplusplus
}
#endif

#endif
