// SPDX-License-Identifier: Apache-2.0
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "nuv/daemon.hpp"

/// Ends the loop on SIGTERM. Made before the first thread starts: threads inherit the blocked signal.
struct SignalWatch final : nuv::daemon::ISimpleFDWatch {
    explicit SignalWatch(nuv::daemon::Mainloop& to_end)
        : ISimpleFDWatch(open(), "signals"), loop(to_end), opened(get_fd()) {}
    ~SignalWatch() override { remove_from_csock(), ::close(opened); }
    int on_readable() override { return loop.finish(), 0; }
    int on_writable() override { return 0; }

    static int open() {
        sigset_t signals;
        ::sigemptyset(&signals), ::sigaddset(&signals, SIGTERM);
        ::sigprocmask(SIG_BLOCK, &signals, nullptr);
        return ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    }
    nuv::daemon::Mainloop& loop;
    int opened;
};

/// Counts seconds and events "greeting"; the debug command STATUS shows the counters.
struct MinimalDaemon {
    MinimalDaemon() {
        loop.add_watch(std::make_shared<SignalWatch>(loop));
        loop.register_nuvipc_event_notifier("greeting", on_greeting, this);
        const auto commands = loop.create_aicmd_module("minimal", this);
        commands->add_command("STATUS", "show the counters", show_status);
        commands->start();
        tick();
    }
    void tick() {
        timer.start(std::chrono::seconds(1), [this] { ++seconds, tick(); });
    }
    static void on_greeting(nuvipc*, const char*, void*, unsigned, void* ctx) {
        ++static_cast<MinimalDaemon*>(ctx)->greetings;
    }
    static int show_status(aicmd_session* session, int, char**) {
        const auto* const self = static_cast<MinimalDaemon*>(aicmd_session_ctx(session));
        return aicmd_printf(session, "%u s, %u greetings\n", self->seconds, self->greetings) < 0;
    }
    nuv::daemon::Mainloop loop{"minimal", true, false};
    nuv::time::Timer timer;
    unsigned seconds = 0, greetings = 0;
};
