// SPDX-License-Identifier: Apache-2.0
// The debug commands that every process on this platform has.
#include <strings.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <exception>

#include "nuv_platform/clock.h"
#include "nuv_platform/clog.h"
#include "platform/common/aicmd_server.hpp"
#include "platform/common/clog_core.hpp"
#include "platform/linux/aicmd.hpp"
#include "platform/linux/ipc/trace.hpp"
#include "platform/linux/loop.hpp"

namespace nuv::platform {

namespace {

double in_ms(std::int64_t ns) { return static_cast<double>(ns) / 1e6; }
double seconds_since(std::int64_t time_ns) {
    return static_cast<double>(nuv_clock_monotonic_ns() - time_ns) / 1e9;
}

/// No exception enters C.
template <int (*Command)(aicmd_session*, int, char**)>
int guarded(aicmd_session* session, int argc, char** argv) noexcept {
    try {
        return Command(session, argc, argv);
    } catch (const std::exception&) {
        return -ENOMEM;
    }
}

int show_loop(aicmd_session* session, int /*argc*/, char** /*argv*/) {
    aicmd_printf(session, "%10s %10s %10s %12s  %s\n", "count", "worst ms", "last ms",
                 "worst s ago", "callback");
    for (const Loop::Slow& slow : process_loop().slow_callbacks()) {
        aicmd_printf(session, "%10u %10.1f %10.1f %12.1f  %s\n", slow.times.count,
                     in_ms(slow.times.worst), in_ms(slow.times.last),
                     seconds_since(slow.times.worst_at), slow.name.c_str());
    }
    return 0;
}

int show_ipc(aicmd_session* session, int /*argc*/, char** /*argv*/) {
    aicmd_printf(session, "%12s  %-8s  %-7s %10s  %s\n", "seconds ago", "way", "kind", "octets",
                 "peer, event, result");
    for (const TraceEntry& entry : recent_messages()) {
        const bool event = entry.kind == TraceKind::EVENT;
        aicmd_printf(session, "%12.1f  %-8s  %-7s %10u  %s%s%s, %s\n", seconds_since(entry.time_ns),
                     entry.direction == TraceDirection::SENT ? "sent" : "received",
                     event ? "event" : "message", entry.size, entry.peer.c_str(), event ? ", " : "",
                     entry.event.c_str(),
                     entry.result == 0 ? "done" : std::strerror(-entry.result));
    }
    aicmd_printf(session, "dropped: %llu\n", static_cast<unsigned long long>(dropped_messages()));
    return 0;
}

__attribute__((format(printf, 2, 3))) int print_line(void* ctx, const char* fmt, ...) {
    std::va_list args;
    va_start(args, fmt);
    const int result = static_cast<aicmd_session*>(ctx)->print(fmt, args);
    va_end(args);
    return result;
}

int show_log(aicmd_session* session, int /*argc*/, char** /*argv*/) {
    int result = 0;
    clog::Registry::get().loggers.for_each([&](clogger& logger) {
        result = result == 0 ? clogger_show(&logger, print_line, session) : result;
    });
    return result;
}

int set_log_level(aicmd_session* /*session*/, int argc, char** argv) {
    constexpr std::array LEVELS = {"none", "error", "warn", "info", "debug", "trace"};
    if (argc != 3) {
        return -EINVAL;
    }
    clogmod* const module = clog::Registry::get().modules.find(argv[1]);
    if (module == nullptr) {
        return -ENOENT;
    }
    for (std::size_t i = 0; i < LEVELS.size(); ++i) {
        if (::strcasecmp(argv[2], LEVELS[i]) == 0) {
            clogmod_set_loglevel(module, static_cast<int>(i) - 1);
            return 0;
        }
    }
    return -EINVAL;
}

constexpr std::array COMMANDS = {
    aicmd_command{"LOOPSHOW", guarded<show_loop>, "show the slowest callbacks of the event loop"},
    aicmd_command{"IPCSHOW", guarded<show_ipc>, "show the last messages and events"},
    aicmd_command{"LOGSHOW", guarded<show_log>, "show the loggers, their outputs and modules"},
    aicmd_command{"LOGLEVEL module none|error|warn|info|debug|trace", guarded<set_log_level>,
                  "set the level of a log module"},
};

}  // namespace

aicmd_library& platform_commands() noexcept {
    static aicmd_library library{"platform", COMMANDS.data(), COMMANDS.size(), {0, 0}};
    return library;
}

}  // namespace nuv::platform
