// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <list>
#include <memory>
#include <string>

#include "nuv/aicmd.hpp"
#include "nuv/export.hpp"
#include "nuv/i_watch_base.hpp"
#include "nuv/time/timer.hpp"
#include "nuv_platform/nuvipc.h"

namespace nuv::daemon {

/// The event loop of a daemon. It owns the daemon's IPC endpoint, debug commands, watchdog and
/// start-up handshake. For one thread, which calls run() in a loop; only finish() and finished() are
/// for any thread.
///
///     auto timeout = Mainloop::DEFAULT_RUN_TIMEOUT;
///     while (!loop.finished()) {
///         timeout = loop.run(timeout);
///     }
///
/// A managed loop runs within the platform's daemon manager: it uses the manager's event loop and
/// endpoint, has no watchdog, and the manager's listener answers its debug commands.
class NUV_EXPORT Mainloop {
public:
    static constexpr const char* DEFAULT_NAME_PREFIX = "app_";
    static constexpr std::chrono::milliseconds MIN_RUN_TIMEOUT{1};
    static constexpr std::chrono::milliseconds DEFAULT_RUN_TIMEOUT{-1};  ///< no deadline

    /// `name` is that of the endpoint and the watchdog; when empty, it is "app_", the process ID and
    /// the thread ID. With `daemonize`, calls daemonize(false, false); when that fails the process
    /// stays in the foreground. A managed loop ignores it.
    ///
    /// Throws std::runtime_error when the platform refuses the event loop, the endpoint or the debug
    /// commands, and time::TimerError when it refuses a timer. Nothing is left behind then.
    Mainloop(const std::string& name, bool daemonize, bool managed);
    Mainloop(const Mainloop&) = delete;
    Mainloop& operator=(const Mainloop&) = delete;
    ~Mainloop();

    /// The instance of the process, which the first call creates with its arguments.
    static Mainloop& get(const std::string& name, bool daemonize, bool managed);

    const std::string& get_name() const noexcept { return name_; }

    /// After finish(), run() does nothing. A wait that is under way ends at the next event, within one
    /// second unless the loop is managed. Any thread.
    void finish() noexcept { finished_ = true; }
    bool finished() const noexcept { return finished_; }

    std::size_t count_watches() const noexcept { return watches_.size(); }
    /// The size of the global future pool.
    std::size_t count_futures() const noexcept;

    /// One pass: waits for events and timers for at most `timeout` (negative: without a limit; the low
    /// 32 bits count), calls their handlers, then looks once at each future of the global pool. Returns
    /// the timeout for the next pass: 1 ms while futures are pending, else -1 ms. The first call after
    /// daemonize() reports that the daemon is ready. Throws what the handler of a future throws.
    std::chrono::milliseconds run(std::chrono::milliseconds timeout);

    /// Makes a daemon of the process as daemon_start() does, with the same arguments and result
    /// (0: success). The first call of run() must follow within 15 seconds of the loop's time,
    /// else the process reports failure and exits with status 1. Throws time::TimerError.
    int daemonize(bool keep_folder, bool keep_streams);

    void trigger_watchdog();

    /// Removes all watches and stops the one-second housekeeping. Throws time::TimerError.
    void clear();

    /// Registers the watch with the event loop and keeps it until it is removed. Returns true, also
    /// when the event loop refuses the registration. A watch that is added twice is kept twice.
    ///
    /// A watch that is removed by a handler lives at least until all handlers of the pass have
    /// returned.
    bool add_watch(std::shared_ptr<IWatchBase> watch);
    /// Returns false when the watch was not added.
    bool remove_watch(const std::shared_ptr<IWatchBase>& watch);
    void remove_watches();

    /// The daemon's endpoint; that of the daemon manager for a managed loop.
    nuvipc* get_nuvipc() const;

    /// Sends the text and a terminating NUL to another endpoint. Returns false, and logs, when the
    /// platform refuses (nuvipc_msg_send()).
    bool send_nuvipc_message(const char* destination, const std::string& message);
    /// Sends an event to everybody who registered for it. Returns false, and logs, when at least one of
    /// them did not get it (nuvipc_event_send()).
    bool send_nuvipc_event(const std::string& event, const void* data, unsigned size);
    /// Results are those of nuvipc_event_register_notifier() and nuvipc_event_unregister_notifier().
    /// A notifier must not throw.
    int register_nuvipc_event_notifier(const char* event, nuvipc_event_callback callback,
                                       void* ctx);
    int unregister_nuvipc_event_notifier(const char* event) noexcept;

    /// As the functions of Aicmd.
    std::shared_ptr<AicmdModule> create_aicmd_module(const std::string& name, void* ctx);
    std::shared_ptr<AicmdModule> get_aicmd_module(const std::string& name) const;
    bool remove_aicmd_module(const std::string& name);

    /// The housekeeping of each second: returns free memory to the system, and starts the timer again.
    void on_second_timer();

private:
    using Watches = std::list<std::shared_ptr<IWatchBase>>;

    void open(bool daemonize);
    void close() noexcept;
    void remove(Watches::iterator watch);

    std::string name_;
    bool daemonized_ = false;
    bool managed_;
    std::atomic<bool> finished_{false};
    time::Timer start_timer_;
    Watches watches_;
    time::Timer second_timer_;
    std::shared_ptr<nuvipc> ipc_;  // empty when managed
    std::unique_ptr<Aicmd> aicmd_;
    bool waiting_ = false;
    Watches removed_;  // during the wait: their handlers may be running
};

}  // namespace nuv::daemon
