// SPDX-License-Identifier: Apache-2.0
#include "platform/common/loop.hpp"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <utility>

#include "nuv_platform/clog.h"

namespace nuv::platform {

namespace {

constexpr std::int64_t NS_PER_SECOND = 1'000'000'000;
constexpr std::int64_t NS_PER_MS = 1'000'000;

// A handle is the descriptor and, above it, the number of the registration of that descriptor.
constexpr unsigned FD_BITS = 20;
constexpr std::uint32_t FD_MASK = (1U << FD_BITS) - 1;
constexpr std::uint32_t GENERATIONS = 0xffff'ffffU >> FD_BITS;
constexpr std::uint32_t WRITABLE_EPOLL = 0;  // is the handle of no registration

int fd_of(std::uint32_t handle) { return static_cast<int>(handle & FD_MASK); }

void warn(const char* function, int line, const std::string& text) {
    clogmod__warn(clogmod_get_or_alloc("csock"), "platform/common/loop", function, line, "%s",
                  text.c_str());
}

}  // namespace

void CallTimes::add(std::int64_t begin, std::int64_t end) noexcept {
    ++count;
    last = end - begin;
    if (last > worst) {
        worst = last;
        worst_at = end;
    }
}

Loop::~Loop() { close_descriptors(); }

int Loop::open() noexcept {
    if (abandoned_) {
        return -ECHILD;
    }
    if (opened_ == 0 && !open_descriptors()) {
        return -errno;
    }
    ++opened_;
    return 0;
}

void Loop::close() noexcept {
    if (opened_ > 0 && --opened_ == 0) {
        for (Registration& registration : registrations_) {
            registration.handle = 0;
        }
        close_descriptors();
        abandoned_ = false;
    }
}

void Loop::abandon() noexcept {
    close_descriptors();
    abandoned_ = is_open();
}

bool Loop::open_descriptors() noexcept {
    epoll_ = ::epoll_create1(EPOLL_CLOEXEC);
    return epoll_ >= 0;
}

void Loop::close_descriptors() noexcept {
    for (int* fd : {&writable_epoll_, &epoll_}) {
        if (*fd >= 0) {
            ::close(*fd);
            *fd = -1;
        }
    }
}

Loop::Registration* Loop::find(std::uint32_t handle) noexcept {
    const std::size_t fd = handle & FD_MASK;
    if (handle == 0 || fd >= registrations_.size() || registrations_[fd].handle != handle) {
        return nullptr;
    }
    return &registrations_[fd];
}

std::uint32_t Loop::add(int fd, const char* name, const Callbacks& callbacks, void* ctx) noexcept {
    const bool wanted = callbacks.readable != nullptr || callbacks.writable != nullptr ||
                        callbacks.urgent != nullptr || callbacks.hang_up != nullptr;
    if (!is_usable() || !wanted || fd < 0 || static_cast<std::uint32_t>(fd) > FD_MASK) {
        return 0;
    }
    try {
        const auto index = static_cast<std::size_t>(fd);
        if (index >= registrations_.size()) {
            registrations_.resize(index + 1);
        }
        Registration next;
        next.generation = registrations_[index].generation % GENERATIONS + 1;
        next.handle = next.generation << FD_BITS | static_cast<std::uint32_t>(fd);
        next.callbacks = callbacks;
        next.ctx = ctx;
        next.name = name != nullptr ? name : "";
        if (!watch(next, fd)) {
            return 0;
        }
        removed_ = true;  // perhaps one that was closed before it was removed
        registrations_[index] = std::move(next);
        return registrations_[index].handle;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

bool Loop::watch(const Registration& registration, int fd) noexcept {
    epoll_event event{};
    event.data.u32 = registration.handle;
    event.events = (registration.callbacks.readable != nullptr ? EPOLLIN : 0U) |
                   (registration.callbacks.urgent != nullptr ? EPOLLPRI : 0U);
    if (::epoll_ctl(epoll_, EPOLL_CTL_ADD, fd, &event) != 0) {
        // There already. When nobody has it registered, it is a file that lives on in a duplicate of
        // a descriptor which was closed before it was removed.
        if (errno != EEXIST || registrations_[static_cast<std::size_t>(fd)].handle != 0 ||
            ::epoll_ctl(epoll_, EPOLL_CTL_MOD, fd, &event) != 0) {
            return false;
        }
    }
    if (registration.callbacks.writable == nullptr) {
        return true;
    }
    if (writable_epoll_ < 0) {
        writable_epoll_ = ::epoll_create1(EPOLL_CLOEXEC);
        epoll_event nested{};
        nested.events = EPOLLIN;
        nested.data.u32 = WRITABLE_EPOLL;
        ::epoll_ctl(epoll_, EPOLL_CTL_ADD, writable_epoll_, &nested);
    }
    event.events = EPOLLOUT | EPOLLET;
    ::epoll_ctl(writable_epoll_, EPOLL_CTL_DEL, fd, nullptr);
    if (::epoll_ctl(writable_epoll_, EPOLL_CTL_ADD, fd, &event) == 0) {
        return true;
    }
    unwatch(fd);
    return false;
}

void Loop::unwatch(int fd) noexcept {
    ::epoll_ctl(epoll_, EPOLL_CTL_DEL, fd, nullptr);
    if (writable_epoll_ >= 0) {
        ::epoll_ctl(writable_epoll_, EPOLL_CTL_DEL, fd, nullptr);
    }
}

int Loop::remove(std::uint32_t handle) noexcept {
    if (abandoned_) {
        return -ECHILD;
    }
    Registration* const registration = find(handle);
    if (registration == nullptr) {
        return -EINVAL;
    }
    registration->handle = 0;
    removed_ = true;
    unwatch(fd_of(handle));
    return 0;
}

int Loop::check(std::uint32_t handle) noexcept {
    if (abandoned_) {
        return -ECHILD;
    }
    return find(handle) != nullptr ? 0 : -EINVAL;
}

const char* Loop::name(std::uint32_t handle) noexcept {
    const Registration* const registration = find(handle);
    return registration != nullptr ? registration->name.c_str() : nullptr;
}

int Loop::arm(ctimerhandle* handle, std::uint32_t count, std::uint32_t units_per_second,
              ctimer_callback_fn callback, void* cbdata) noexcept {
    const std::int64_t duration = std::int64_t{count} * (NS_PER_SECOND / units_per_second);
    return timers_.arm(handle, duration, callback, cbdata);
}

int Loop::end(const ctimerhandle* handle, std::int64_t& end_ns) noexcept {
    if (timers_.any_to_start()) {
        timers_.start(now_ns());
    }
    return timers_.end(handle, end_ns);
}

int Loop::pass(std::int32_t msecs) {
    if (abandoned_) {
        return -ECHILD;
    }
    if (!is_open()) {
        return -EINVAL;
    }
    if (in_pass_) {
        return -EDEADLK;
    }
    struct Pass {
        explicit Pass(bool& flag) : in_pass(flag) { in_pass = true; }
        ~Pass() { in_pass = false; }
        bool& in_pass;
    } const guard(in_pass_);

    std::int64_t timeout = msecs < 0 ? Timers::NEVER : msecs * NS_PER_MS;
    if (timers_.size() > 0) {
        const std::int64_t now = now_ns();
        timers_.start(now);
        timeout = std::min(timeout, std::max<std::int64_t>(timers_.next_end() - now, 0));
    }
    const int ready = wait(epoll_, events_, timeout);
    if (ready < 0) {
        return errno == EINTR ? 0 : -errno;
    }

    removed_ = false;
    stale_ = false;
    last_call_ended_ = coarse_now_ns();
    if (timers_.size() > 0) {
        fire_timers(now_ns());
    }
    for (int i = 0; i < ready && is_usable(); ++i) {
        dispatch(events_[static_cast<std::size_t>(i)]);
    }
    if (stale_ && is_usable()) {
        rebuild();
    }
    return 0;
}

void Loop::fire_timers(std::int64_t now) {
    Timers::Due due;
    while (!abandoned_ && timers_.take_due(now, due)) {
        due.callback(due.handle, due.cbdata);
        const std::int64_t begin = std::exchange(last_call_ended_, coarse_now_ns());
        if (CallTimes* const times = times_of(due.cbdata)) {
            times->add(begin, last_call_ended_);
        }
    }
}

void Loop::dispatch(const epoll_event& event) {
    const std::uint32_t handle = event.data.u32;
    if (handle == WRITABLE_EPOLL) {
        dispatch_writable();
        return;
    }
    const Registration* const registration = find(handle);
    if (registration == nullptr) {
        stale_ = stale_ || !removed_;
        return;
    }
    const Callbacks& callbacks = registration->callbacks;
    auto hang_up = &Callbacks::hang_up;
    if (callbacks.hang_up == nullptr) {
        hang_up = callbacks.readable != nullptr ? &Callbacks::readable : &Callbacks::writable;
    }
    const bool hung_up = (event.events & (EPOLLHUP | EPOLLERR)) != 0;
    if (hung_up && callbacks.*hang_up == nullptr) {
        warn(__func__, __LINE__,
             "dropped descriptor " + std::to_string(fd_of(handle)) + " \"" + registration->name +
                 "\": it has hung up or failed, and no callback takes that");
        remove(handle);
        return;
    }
    // Each of these may remove the registration; call() then does nothing.
    if ((event.events & EPOLLIN) != 0 && !call(handle, &Callbacks::readable)) {
        return;
    }
    if ((event.events & EPOLLPRI) != 0 && !call(handle, &Callbacks::urgent)) {
        return;
    }
    if (hung_up && (hang_up != &Callbacks::readable || (event.events & EPOLLIN) == 0)) {
        call(handle, hang_up);
    }
}

void Loop::dispatch_writable() {
    const int ready = ::epoll_wait(writable_epoll_, writable_events_.data(),
                                   static_cast<int>(writable_events_.size()), 0);
    for (int i = 0; i < ready && is_usable(); ++i) {
        const epoll_event& event = writable_events_[static_cast<std::size_t>(i)];
        if (find(event.data.u32) == nullptr) {
            stale_ = stale_ || !removed_;
        } else if ((event.events & EPOLLOUT) != 0) {
            call(event.data.u32, &Callbacks::writable);
        }
    }
}

/// Returns whether the registration is still there.
bool Loop::call(std::uint32_t handle, csock_fd_callback Callbacks::*which) {
    Registration* registration = find(handle);
    if (registration == nullptr) {
        return false;
    }
    if (const auto callback = registration->callbacks.*which) {
        callback(fd_of(handle), registration->ctx);
        const std::int64_t begin = std::exchange(last_call_ended_, coarse_now_ns());
        registration = find(handle);
        if (registration != nullptr) {
            registration->times.add(begin, last_call_ended_);
        }
    }
    return registration != nullptr;
}

/// For files that the system goes on reporting and that cannot be named any more.
void Loop::rebuild() noexcept {
    close_descriptors();
    if (!open_descriptors()) {
        warn(__func__, __LINE__, std::string("epoll_create1: ") + std::strerror(errno));
        return;
    }
    for (Registration& registration : registrations_) {
        if (registration.handle != 0 && !watch(registration, fd_of(registration.handle))) {
            registration.handle = 0;
        }
    }
}

/// Null when its place belongs to a slower one.
CallTimes* Loop::times_of(void* cbdata) noexcept {
    TimerTimes& entry =
        timer_times_[(reinterpret_cast<std::uintptr_t>(cbdata) / 16) % timer_times_.size()];
    if (entry.cbdata != cbdata) {
        if (entry.times.worst > 0) {
            return nullptr;
        }
        entry = {cbdata, {}};
    }
    return &entry.times;
}

std::vector<Loop::Slow> Loop::slow_callbacks() const {
    std::vector<Slow> slow;
    for (const Registration& registration : registrations_) {
        if (registration.handle != 0 && registration.times.worst > 0) {
            slow.push_back({registration.name, registration.times});
        }
    }
    for (const TimerTimes& entry : timer_times_) {
        if (entry.times.worst > 0) {
            std::array<char, 24> digits{};
            const auto address = reinterpret_cast<std::uintptr_t>(entry.cbdata);
            const auto end = std::to_chars(digits.begin(), digits.end(), address, 16).ptr;
            slow.push_back({"0x" + std::string(digits.begin(), end), entry.times});
        }
    }
    std::stable_sort(slow.begin(), slow.end(),
                     [](const Slow& a, const Slow& b) { return a.times.worst > b.times.worst; });
    return slow;
}

std::vector<std::string> Loop::registered() const {
    std::vector<std::string> names;
    for (const Registration& registration : registrations_) {
        if (registration.handle != 0) {
            names.push_back(registration.name);
        }
    }
    return names;
}

}  // namespace nuv::platform
