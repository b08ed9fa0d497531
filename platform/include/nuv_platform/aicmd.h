/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_AICMD_H
#define NUV_PLATFORM_AICMD_H

#include <stdint.h>

#include "nuv_platform/export.h"
#include "nuv_platform/nuvipc.h"

/**
 * @file
 * The server of debug commands: text commands to a running daemon.
 *
 * Protocol, over a stream: the client sends one line for each command, ended by a newline, at most
 * 4,096 octets with it. Words are separated by blanks and tabs; double quotes group, and inside them a
 * backslash takes the next octet as it is. The server answers with lines of text, and then one line
 * "OK", or "ERROR" and a blank and a text. There is no prompt. An empty line is answered with "OK".
 * Lines that the client sends ahead wait until it has the answers to those before. After its end of
 * input it gets the answers that it is owed, and then the end of file. A listener has at most eight
 * sessions; the next client reads "ERROR too many sessions" and the end of file.
 * On Linux the server is the stream socket NAME.cmd beside the endpoint's own, for the same users.
 *
 * The first word says the command, in any case. Those of the listener come first, then those of the
 * libraries in the order of their registration.
 *
 * Handlers are called inside the wait of the event loop (csock.h), on its thread, from which all
 * calls come. They must not throw.
 */

#ifdef __cplusplus
extern "C" {
#endif

/** A client's connection while one of its commands runs. */
typedef struct aicmd_session aicmd_session;

/** `argv[0]` to `argv[argc - 1]` are the words of the line, `argv[argc]` is NULL. Returns 0 for "OK",
 *  else the session answers "ERROR" and the number, as errno text when it is negative. */
typedef int (*aicmd_handler)(aicmd_session* session, int argc, char** argv);

typedef struct aicmd_command {
    const char* command; /**< the first word, and behind it for people: its arguments */
    aicmd_handler handler;
    const char* help;
} aicmd_command;

typedef struct aicmd_listener {
    const char* name;
    const aicmd_command* commands;
    uint32_t count;
    uint32_t zero[2];
} aicmd_listener;

typedef struct aicmd_library {
    const char* name;
    const aicmd_command* commands;
    uint32_t count;
    uint32_t zero[2];
} aicmd_library;

/**
 * Begins to answer commands for the endpoint `ipc`, until that is destroyed. Name and table are copied.
 * The other arguments are 0. Results: 0, `-EINVAL` for a NULL pointer, `-EEXIST` when the endpoint has
 * a listener, else the negated errno of what failed.
 */
NUV_PLATFORM_EXPORT int aicmd_listen_start(nuvipc* ipc, aicmd_listener* listener, unsigned zero1,
                                           unsigned zero2, unsigned zero3, unsigned zero4,
                                           unsigned zero5, ...);

/**
 * Adds the commands of a library to every listener of the process, those to come included. The table is
 * borrowed until the library is unregistered. `-EEXIST` when one of its first words is taken, or the
 * library is registered.
 */
NUV_PLATFORM_EXPORT int aicmd_register_library(aicmd_library* library);
/** `-ENOENT` when it is not registered. When one of its handlers asks for it, the session ends. */
NUV_PLATFORM_EXPORT int aicmd_unregister_library(aicmd_library* library);
/** What aicmd_session_ctx() gives the handlers of this library. `name` is the library's. */
NUV_PLATFORM_EXPORT int aicmd_module_set_ctx(aicmd_library* library, const char* name, void* ctx);

/** For clients: a descriptor of a connection to the listener of `endpoint`, close-on-exec and
 *  blocking; the caller closes it. < 0: as nuvipc_msg_send(). */
NUV_PLATFORM_EXPORT int aicmd_connect(const char* endpoint);

/** Writes text to the client. What it does not read waits in at most 1 MiB; beyond that the session is
 *  cut. Returns the length; < 0: the session is gone. */
NUV_PLATFORM_EXPORT int aicmd_printf(aicmd_session* session, const char* fmt, ...)
    __attribute__((format(printf, 2, 3)));
/** The context of the library whose handler runs, else NULL. */
NUV_PLATFORM_EXPORT void* aicmd_session_ctx(aicmd_session* session);

/** Handlers for the tables of listeners: the commands there are, or with an argument those that begin
 *  with it; the allocator's statistics, long and short; the end of the session. */
NUV_PLATFORM_EXPORT int aicmd_help(aicmd_session* session, int argc, char** argv);
NUV_PLATFORM_EXPORT int aicmd_slabdump(aicmd_session* session, int argc, char** argv);
NUV_PLATFORM_EXPORT int aicmd_slabshow(aicmd_session* session, int argc, char** argv);
NUV_PLATFORM_EXPORT int aicmd_quit(aicmd_session* session, int argc, char** argv);

#ifdef __cplusplus
}
#endif

#endif
