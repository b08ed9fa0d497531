// SPDX-License-Identifier: Apache-2.0
// The least platform there can be: it has none of the calls that are marked optional in its headers.
#include <cstdarg>
#include <cstdio>
#include <string>

#include "nuv_platform/aicmd.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/csock.h"
#include "nuv_platform/ctimer.h"
#include "nuv_platform/daemon.h"
#include "nuv_platform/ifwatch.h"
#include "nuv_platform/nuvipc.h"
#include "nuv_platform/slab.h"
#include "nuv_platform/watchdog.h"

struct clogger {};
struct clogmod {};

std::string records;  // for the program

namespace {

clogger the_logger;
clogmod the_module;

void write(const char* level, const char* fmt, std::va_list args) {
    char text[100];
    std::vsnprintf(text, sizeof text, fmt, args);
    records.append(level).append(" ").append(text).append("\n");
}

}  // namespace

#define RECORD(call, Handle, level, ...)                                                  \
    void call(Handle*, const char*, const char*, int, __VA_ARGS__ const char* fmt, ...) { \
        std::va_list args;                                                                \
        va_start(args, fmt);                                                              \
        write(level, fmt, args);                                                          \
        va_end(args);                                                                     \
    }
#define OUTPUT(call, ...) \
    int call(clogger* __VA_OPT__(, ) __VA_ARGS__) { return 0; }

extern "C" {
clogger* clogger_get(const char*) { return &the_logger; }
clogger* clogger_alloc(const char*) { return &the_logger; }
clogmod* clogmod_get_or_alloc(const char*) { return &the_module; }
RECORD(clogger__err, clogger, "error")
RECORD(clogger__warn, clogger, "warn")
RECORD(clogger__info, clogger, "info")
RECORD(clogger__debug, clogger, "debug", int, )
RECORD(clogmod__err, clogmod, "error")
RECORD(clogmod__warn, clogmod, "warn")
RECORD(clogmod__info, clogmod, "info")
RECORD(clogmod__debug, clogmod, "debug")
RECORD(clogmod__trace, clogmod, "trace")
OUTPUT(clogger_enable_stderr, uint16_t, uint16_t)
OUTPUT(clogger_enable_stdout, uint16_t, uint16_t)
OUTPUT(clogger_enable_syslog, uint16_t, uint16_t)
OUTPUT(clogger_disable_stderr)
OUTPUT(clogger_disable_stdout)
OUTPUT(clogger_disable_syslog)
OUTPUT(clogger_add_shringbuf, const char*, uint32_t, uint16_t, uint16_t)
OUTPUT(clogger_rm_shringbuf, const char*)
OUTPUT(clogger_add_file, const char*, uint32_t, const clogger_backup_style*, uint16_t, uint16_t)
OUTPUT(clogger_rm_file, const char*)
OUTPUT(clogger_add_function, clogger_function, void*, int, uint16_t, uint16_t)
OUTPUT(clogger_rm_function, clogger_function, void*)
OUTPUT(clogger_add_ext_function, clogger_ext_function, void*, int, uint16_t, uint16_t)
OUTPUT(clogger_rm_ext_function, clogger_ext_function, void*)
OUTPUT(clogger_add_msg_filter, clogger_msg_filter, void*)
OUTPUT(clogger_rm_msg_filter, clogger_msg_filter, void*)
int if_get_hwaddr(const char*, uint8_t*) { return -1; }

// No daemon runs on it.
int csock_init(void) { return -1; }
void csock_exit(void) {}
uint32_t csock_add_fd(int, const char*, csock_fd_callback, csock_fd_callback, csock_fd_callback,
                      csock_fd_callback, unsigned, void*) {
    return 0;
}
int csock_remove_fd(uint32_t) { return -1; }
int csock_fd_blocking(uint32_t) { return -1; }
int csock_select_with_msecs(int32_t) { return -1; }
int ctimer_setup_internal(void*, ctimerhandle*, int, int, uint32_t, uint32_t, ctimer_callback_fn,
                          void*, int, int) {
    return -1;
}
int ctimer_unsetup_internal(ctimerhandle*, int) { return -1; }
int ctimer_endtval_internal(ctimerhandle*, int, ctimer_tval*) { return -1; }
void ctimer_elapsedtval(ctimer_tval*) {}
nuvipc* nuvipc_create(const char*) { return nullptr; }
void nuvipc_destroy(nuvipc*) {}
int nuvipc_msg_register(nuvipc*, nuvipc_msg_handler, void*, unsigned) { return -1; }
int nuvipc_msg_unregister(nuvipc*) { return -1; }
int nuvipc_msg_send(nuvipc*, const char*, const void*, unsigned) { return -1; }
int nuvipc_event_send(nuvipc*, const char*, const void*, unsigned) { return -1; }
int nuvipc_event_register_notifier(nuvipc*, const char*, nuvipc_event_callback, void*) {
    return -1;
}
int nuvipc_event_unregister_notifier(nuvipc*, const char*) { return -1; }
nuvipc* daemonmng_get_nuvipc(void) { return nullptr; }
int daemon_start(int, int) { return -1; }
void daemon_ready(void) {}
void daemon_start_failed(void) {}
int watchdog_csock_init(const char*) { return -1; }
void watchdog_csock_trigger(void) {}
void watchdog_csock_exit(void) {}
void slab_reap(void) {}
int aicmd_listen_start(nuvipc*, aicmd_listener*, unsigned, unsigned, unsigned, unsigned, unsigned,
                       ...) {
    return -1;
}
int aicmd_register_library(aicmd_library*) { return -1; }
int aicmd_unregister_library(aicmd_library*) { return -1; }
int aicmd_module_set_ctx(aicmd_library*, const char*, void*) { return -1; }
int aicmd_help(aicmd_session*, int, char**) { return -1; }
int aicmd_slabdump(aicmd_session*, int, char**) { return -1; }
int aicmd_slabshow(aicmd_session*, int, char**) { return -1; }
int aicmd_quit(aicmd_session*, int, char**) { return -1; }
}
