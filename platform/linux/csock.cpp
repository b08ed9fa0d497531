// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/csock.h"

#include <ctime>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <new>

#include "nuv_platform/clock.h"
#include "platform/linux/fork.hpp"
#include "platform/linux/loop.hpp"

namespace nuv::platform {

namespace {

class LinuxLoop final : public Loop {
    std::int64_t now_ns() noexcept override { return nuv_clock_monotonic_ns(); }

    std::int64_t coarse_now_ns() noexcept override {
        timespec time{};
        ::clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
        return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
    }

    int wait(int epoll_fd, std::span<epoll_event> ready, std::int64_t timeout_ns) override {
        int msecs = -1;
        if (timeout_ns != Timers::NEVER) {
            // Rounded up: no timer is early. A limit that does not fit only ends the pass sooner.
            const std::int64_t whole = timeout_ns / 1'000'000 + (timeout_ns % 1'000'000 != 0);
            msecs =
                static_cast<int>(std::min<std::int64_t>(whole, std::numeric_limits<int>::max()));
        }
        return ::epoll_wait(epoll_fd, ready.data(), static_cast<int>(ready.size()), msecs);
    }
};

}  // namespace

Loop& process_loop() noexcept {
    static LinuxLoop loop;
    return loop;
}

}  // namespace nuv::platform

using nuv::platform::process_loop;

extern "C" {

int csock_init(void) {
    try {
        nuv::platform::watch_forks();
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
    return process_loop().open();
}

void csock_exit(void) { process_loop().close(); }

uint32_t csock_add_fd(int fd, const char* name, csock_fd_callback readable,
                      csock_fd_callback writable, csock_fd_callback urgent,
                      csock_fd_callback hang_up, unsigned /*flags*/, void* ctx) {
    return process_loop().add(fd, name, {readable, writable, urgent, hang_up}, ctx);
}

int csock_remove_fd(uint32_t handle) { return process_loop().remove(handle); }

int csock_fd_blocking(uint32_t handle) { return process_loop().check(handle); }

int csock_select_with_msecs(int32_t msecs) { return process_loop().pass(msecs); }

}  // extern "C"
