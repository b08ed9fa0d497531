// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/epoll.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "nuv_platform/csock.h"
#include "platform/common/timers.hpp"

namespace nuv::platform {

/// Duration of callbacks, in nanoseconds. One that took less than a step of the clock counts as 0.
struct CallTimes {
    std::uint32_t count = 0;
    std::int64_t last = 0;
    std::int64_t worst = 0;
    std::int64_t worst_at = 0;

    void add(std::int64_t begin, std::int64_t end) noexcept;
};

/// The event loop behind csock.h and ctimer.h: registrations in an epoll instance, and timers.
/// An implementation adds its clock and the way it waits. Results are those of csock.h.
class Loop {
public:
    struct Callbacks {
        csock_fd_callback readable = nullptr;
        csock_fd_callback writable = nullptr;
        csock_fd_callback urgent = nullptr;
        csock_fd_callback hang_up = nullptr;
    };

    Loop() = default;
    virtual ~Loop();
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    int open() noexcept;
    void close() noexcept;
    bool is_open() const noexcept { return opened_ > 0; }
    /// In a child made by fork(): closes its copies of the descriptors and leaves what the parent waits
    /// for alone. Calls answer -ECHILD, until close() was called as often as open().
    void abandon() noexcept;
    bool is_abandoned() const noexcept { return abandoned_; }

    std::uint32_t add(int fd, const char* name, const Callbacks& callbacks, void* ctx) noexcept;
    int remove(std::uint32_t handle) noexcept;
    /// 0 for a handle that is registered. All callbacks are called as csock_fd_blocking() promises.
    int check(std::uint32_t handle) noexcept;
    /// The name it was registered with, or null.
    const char* name(std::uint32_t handle) noexcept;
    int pass(std::int32_t msecs);

    int arm(ctimerhandle* handle, std::uint32_t count, std::uint32_t units_per_second,
            ctimer_callback_fn callback, void* cbdata) noexcept;
    int disarm(ctimerhandle* handle) noexcept { return timers_.disarm(handle); }
    int end(const ctimerhandle* handle, std::int64_t& end_ns) noexcept;

    struct Slow {
        std::string name;
        CallTimes times;
    };
    /// The callbacks that took at least one step of the clock, slowest first.
    std::vector<Slow> slow_callbacks() const;
    std::vector<std::string> registered() const;
    std::size_t armed_timers() const noexcept { return timers_.size(); }

protected:
    virtual std::int64_t now_ns() noexcept = 0;
    /// The same, cheaper and with larger steps.
    virtual std::int64_t coarse_now_ns() noexcept = 0;
    /// epoll_wait() on `epoll_fd` until a descriptor is ready or `timeout_ns` have passed, never less
    /// (Timers::NEVER: without limit). -1 with errno EINTR ends the pass.
    virtual int wait(int epoll_fd, std::span<epoll_event> ready, std::int64_t timeout_ns) = 0;

private:
    struct Registration {
        std::uint32_t handle = 0;  // 0: none
        std::uint32_t generation = 0;
        Callbacks callbacks;
        void* ctx = nullptr;
        std::string name;
        CallTimes times;
    };
    struct TimerTimes {
        void* cbdata = nullptr;
        CallTimes times;
    };
    using Events = std::array<epoll_event, 128>;

    Registration* find(std::uint32_t handle) noexcept;
    bool watch(const Registration& registration, int fd) noexcept;
    void unwatch(int fd) noexcept;
    bool open_descriptors() noexcept;
    void close_descriptors() noexcept;
    void rebuild() noexcept;
    void fire_timers(std::int64_t now);
    void dispatch(const epoll_event& event);
    void dispatch_writable();
    bool call(std::uint32_t handle, csock_fd_callback Callbacks::*which);
    CallTimes* times_of(void* cbdata) noexcept;

    bool is_usable() const noexcept { return is_open() && !abandoned_; }

    unsigned opened_ = 0;
    bool abandoned_ = false;
    bool in_pass_ = false;
    bool removed_ =
        false;            // in this pass: later events of its batch may be of removed registrations
    bool stale_ = false;  // the system reports a file that nobody registers any more
    int epoll_ = -1;
    // Readable is level-triggered and writable edge-triggered; one instance cannot be both for a
    // descriptor. This one is nested in the first. -1: no writable callback yet.
    int writable_epoll_ = -1;
    std::vector<Registration> registrations_;  // by descriptor
    Timers timers_;
    std::int64_t last_call_ended_ = 0;
    std::array<TimerTimes, 64> timer_times_{};
    Events events_{};
    Events writable_events_{};
};

}  // namespace nuv::platform
