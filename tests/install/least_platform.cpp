// SPDX-License-Identifier: Apache-2.0
// The least platform there can be: it has none of the calls that are marked optional in its headers.
#include <cstdarg>
#include <cstdio>
#include <string>

#include "nuv_platform/clog.h"
#include "nuv_platform/ifwatch.h"

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
}
