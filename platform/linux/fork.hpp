// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/common/file_descriptor.hpp"

/// What a fork() does to the platform. A child loses everything: its copies of the descriptors of the
/// loop and of the endpoints are closed, and all calls answer -ECHILD there. Only the child that becomes
/// the daemon keeps what the process had; the process that it came from then waits and _exit()s.
namespace nuv::platform {

/// While one of these lives, the child of a fork() keeps everything.
class KeepAcrossFork {
public:
    KeepAcrossFork();
    ~KeepAcrossFork();
    KeepAcrossFork(const KeepAcrossFork&) = delete;
    KeepAcrossFork& operator=(const KeepAcrossFork&) = delete;

    static bool active() noexcept;
};

/// In the child that keeps everything, before anything else: it becomes the owner. Its sockets listen
/// again (peers are shown the process that called listen() last), the lock files name it, and the log
/// rings take its lines.
void take_over_after_fork();

/// In the parent of such a child, before it logs anything: it leaves the log rings to the child.
void detach_after_fork();

/// From now on children give up the loop of their parent, also when there is no UnsharedDescriptor.
/// Throws std::bad_alloc.
void watch_forks();

/// Counts the forks that this process came from and that took everything from it, from 1.
inline std::uint32_t fork_generation = 1;

/// A descriptor that is closed with its object, and that children close. There the object has none.
class UnsharedDescriptor {
public:
    UnsharedDescriptor() noexcept = default;
    /// Throws std::bad_alloc.
    explicit UnsharedDescriptor(FileDescriptor fd);
    UnsharedDescriptor(UnsharedDescriptor&& other) noexcept;
    UnsharedDescriptor& operator=(UnsharedDescriptor&& other) noexcept;
    ~UnsharedDescriptor() { reset(); }

    int get() const noexcept { return inherited() ? -1 : fd_.get(); }
    explicit operator bool() const noexcept { return get() >= 0; }
    void reset() noexcept;
    /// It was the parent's.
    bool inherited() const noexcept { return fd_ && generation_ != fork_generation; }

private:
    FileDescriptor fd_;
    std::uint32_t generation_ = 0;
};

}  // namespace nuv::platform
