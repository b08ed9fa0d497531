// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/fork.hpp"

#include <pthread.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include "platform/common/clog_core.hpp"
#include "platform/linux/ipc/endpoint.hpp"
#include "platform/linux/loop.hpp"

namespace nuv::platform {

namespace {

std::atomic<unsigned> keeping{0};

/// The descriptors that children close.
class Unshared {
public:
    static Unshared& get() {
        static Unshared instance;
        return instance;
    }

    void add(int fd) {
        const std::lock_guard lock(mutex_);
        const auto index = static_cast<std::size_t>(fd);
        if (index >= descriptors_.size()) {
            descriptors_.resize(index + 1);
        }
        descriptors_[index] = true;
    }

    void remove(int fd) noexcept {
        const std::lock_guard lock(mutex_);
        descriptors_[static_cast<std::size_t>(fd)] = false;
    }

    template <typename Visitor>
    void for_each(Visitor visitor) const {
        for (std::size_t fd = 0; fd < descriptors_.size(); ++fd) {
            if (descriptors_[fd]) {
                visitor(static_cast<int>(fd));
            }
        }
    }

private:
    Unshared() {
        if (::pthread_atfork([] { get().mutex_.lock(); }, [] { get().mutex_.unlock(); },
                             [] { get().in_child(); }) != 0) {
            throw std::bad_alloc();
        }
    }

    void in_child() noexcept {
        if (!KeepAcrossFork::active()) {
            for_each([](int fd) { ::close(fd); });
            descriptors_.assign(descriptors_.size(), false);
            ++fork_generation;
            process_loop().abandon();
        }
        mutex_.unlock();
    }

    std::mutex mutex_;
    std::vector<bool> descriptors_;
};

void own_log_outputs(bool own) {
    clog::Registry::get().loggers.for_each([own](clogger& logger) { logger.outputs.own(own); });
}

}  // namespace

KeepAcrossFork::KeepAcrossFork() { ++keeping; }
KeepAcrossFork::~KeepAcrossFork() { --keeping; }
bool KeepAcrossFork::active() noexcept { return keeping > 0; }

void take_over_after_fork() {
    Unshared::get().for_each([](int fd) {
        int listens = 0;
        socklen_t size = sizeof listens;
        if (::getsockopt(fd, SOL_SOCKET, SO_ACCEPTCONN, &listens, &size) == 0 && listens != 0) {
            ::listen(fd, SOMAXCONN);
        }
    });
    Endpoint::write_pids();
    own_log_outputs(true);
}

void detach_after_fork() { own_log_outputs(false); }

void watch_forks() { Unshared::get(); }

UnsharedDescriptor::UnsharedDescriptor(FileDescriptor fd) : fd_(std::move(fd)) {
    if (fd_) {
        Unshared::get().add(fd_.get());
        generation_ = fork_generation;
    }
}

UnsharedDescriptor::UnsharedDescriptor(UnsharedDescriptor&& other) noexcept
    : fd_(std::move(other.fd_)), generation_(other.generation_) {}

UnsharedDescriptor& UnsharedDescriptor::operator=(UnsharedDescriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    std::swap(generation_, other.generation_);
    return *this;
}

void UnsharedDescriptor::reset() noexcept {
    if (inherited()) {
        (void)fd_.release();  // closed by the handler; the number may belong to somebody else now
    } else if (fd_) {
        Unshared::get().remove(fd_.get());
        fd_.reset();
    }
}

}  // namespace nuv::platform
