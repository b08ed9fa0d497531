/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_NUVIPC_H
#define NUV_PLATFORM_NUVIPC_H

#include <stdint.h>

#include "nuv_platform/export.h"

/**
 * @file
 * Messages and events between the processes of a machine.
 *
 * An endpoint is a name with one living owner. A message goes to one endpoint, an event to all that
 * registered a notifier for its name. Octets are opaque; the boundaries and the order of what one
 * sender sends to one receiver, messages and events alike, are kept. A process may own several
 * endpoints.
 *
 * Endpoint names: 1 to 64 characters of `A-Za-z0-9_.-`, the first one a letter, digit or `_`, not
 * ending in ".lock", ".new", ".events" or ".cmd". Event names: 1 to 64 octets without control
 * characters (0 to 31 and 127) and `*`.
 *
 * Handlers and notifiers are called inside the wait of the event loop (csock.h), on its thread, from
 * which all calls come; no call here calls back before it returns. The pointers that they are given
 * hold until they return. They may call everything, and destroy their endpoint. They must not throw.
 *
 * No call blocks. Results of the functions that return an int:
 *
 * | result          | meaning                                                               |
 * |-----------------|-----------------------------------------------------------------------|
 * | >= 0            | done; to send a message: it is in the queue of a living receiver      |
 * | `-EINVAL`       | a NULL handle or function, or an invalid name                         |
 * | `-ENOENT`       | there is no endpoint of this name, or nothing registered to end       |
 * | `-ECONNREFUSED` | the owner of the endpoint is gone                                     |
 * | `-EACCES`       | the endpoint belongs to somebody who may not talk to the caller       |
 * | `-EAGAIN`       | the receiver does not keep up; nothing of this message is queued      |
 * | `-EMSGSIZE`     | more than 16 MiB                                                      |
 * | `-EEXIST`       | to register: there is a handler or notifier already; it stays         |
 * | `-EMFILE`, `-ENOMEM`, ... | the negated errno of what failed; nothing has changed       |
 * | `-ECHILD`       | in a child made by fork(): the endpoint stays the parent's            |
 */

#ifdef __cplusplus
extern "C" {
#endif

typedef struct nuvipc nuvipc;

#define NUVIPC_MAX_SIZE 16777216U /**< octets of a message or event */

/** `sender` is the name of the endpoint it came from; empty when the sending process is not, or no
 *  longer, the owner of the name that it gave. `data` is `size` octets, for size 0 any. */
typedef void (*nuvipc_msg_handler)(nuvipc* ipc, const char* sender, void* data, unsigned size,
                                   void* ctx);
/** `event` is the event's name. */
typedef void (*nuvipc_event_callback)(nuvipc* ipc, const char* event, void* data, unsigned size,
                                      void* ctx);

/**
 * Becomes the owner of the endpoint `name`; the event loop has to be open. NULL when that fails, and
 * a line in the log says why: a bad name, a living owner, no folder to live in, no memory. The name of
 * an owner that died is taken over, and the notifiers that it had registered are gone.
 */
NUV_PLATFORM_EXPORT nuvipc* nuvipc_create(const char* name);
/** Gives the name up. What was not delivered yet is dropped. NULL does nothing. */
NUV_PLATFORM_EXPORT void nuvipc_destroy(nuvipc* ipc);

/** Sets what takes the messages; those that come without it are dropped. `flags` is 0. */
NUV_PLATFORM_EXPORT int nuvipc_msg_register(nuvipc* ipc, nuvipc_msg_handler handler, void* ctx,
                                            unsigned flags);
NUV_PLATFORM_EXPORT int nuvipc_msg_unregister(nuvipc* ipc);

/**
 * Sends `size` octets to the endpoint `destination`, the caller's own included.
 *
 * A receiver that dies takes what it has not read along, and the sender's log says so; whoever has to
 * know acknowledges in messages of its own. How much is queued for a receiver that does not read is the
 * platform's; above 64 KiB a message counts against 32 MiB that are not handled yet.
 */
NUV_PLATFORM_EXPORT int nuvipc_msg_send(nuvipc* ipc, const char* destination, const void* data,
                                        unsigned size);

/**
 * Sends an event to every endpoint with a notifier for it, the caller's own included: that one is
 * called in a later pass. 0: it is queued at every living one; that there is none is no failure, either.
 * < 0: at least one living one did not get it; the others did.
 */
NUV_PLATFORM_EXPORT int nuvipc_event_send(nuvipc* ipc, const char* event, const void* data,
                                          unsigned size);

/**
 * Registers the one notifier of this endpoint for events named `event`; "*" takes all events, after
 * the notifier for the name when there is one. Once it has returned 0, every event sent afterwards is delivered,
 * also those of processes that begin only then. What is sent while a process is away is not kept
 * for it, and it registers again itself.
 */
NUV_PLATFORM_EXPORT int nuvipc_event_register_notifier(nuvipc* ipc, const char* event,
                                                       nuvipc_event_callback callback, void* ctx);
/** Once this has returned, the notifier is not called any more. */
NUV_PLATFORM_EXPORT int nuvipc_event_unregister_notifier(nuvipc* ipc, const char* event);

/** An endpoint, for people. Valid until the callback returns. */
typedef struct nuvipc_endpoint {
    const char* name;
    int32_t pid;  /**< of the owner, the last one when it is not alive */
    uint32_t uid; /**< of the owner */
    uint32_t gid;
    uint32_t mode; /**< who may call: the permission bits of its socket, as in stat(2) */
    int alive;     /**< non-zero: it has an owner */
} nuvipc_endpoint;

/** Calls `each` for the endpoints of this machine, by name, until it returns other than 0. Returns that,
 *  or 0. Needs no endpoint. */
NUV_PLATFORM_EXPORT int nuvipc_list(int (*each)(const nuvipc_endpoint* endpoint, void* ctx),
                                    void* ctx);

/**
 * The daemon manager: a process that hosts daemons as parts of itself. It opens the event loop and the
 * endpoint `name`, which all of them use. `-EEXIST` when it has been called already.
 */
NUV_PLATFORM_EXPORT int daemonmng_init(const char* name);
NUV_PLATFORM_EXPORT void daemonmng_exit(void);
/** The endpoint of the daemon manager, NULL outside of one. */
NUV_PLATFORM_EXPORT nuvipc* daemonmng_get_nuvipc(void);

#ifdef __cplusplus
}
#endif

#endif
