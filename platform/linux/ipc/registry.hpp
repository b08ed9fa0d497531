// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/common/file_descriptor.hpp"

/// The files of the endpoints in the runtime folder. Of the endpoint NAME: its socket NAME; NAME.lock,
/// locked by the living owner, with the pid of the last one; NAME.events, the events that it has
/// notifiers for, one per line. One for all is ".counter", which changes after each change of a list.
namespace nuv::platform {

/// Becomes the owner of the name: a descriptor of its lock file, with this process as its owner. It is
/// the owner as long as it is open. None on failure, and errno: EADDRINUSE for a living owner.
FileDescriptor lock_name(int folder, const std::string& name) noexcept;

/// Writes the pid of this process into a lock file. 0 or the negated errno.
int write_pid(int lock) noexcept;

struct Owner {
    std::int32_t pid = 0;  ///< of the last owner; 0: unknown
    bool alive = false;
};
Owner owner_of(int folder, const std::string& name) noexcept;

/// 0 or the negated errno. An empty list is no file.
int write_event_list(int folder, const std::string& name,
                     const std::vector<std::string>& events) noexcept;

struct EventList {
    std::string endpoint;
    std::vector<std::string> events;
    bool unreachable = false;  ///< for the reader's own use
};
/// Those that can be read. 0, or the negated errno for want of descriptors or memory.
int read_event_lists(int folder, std::vector<EventList>& lists) noexcept;

/// The names of the sockets in the folder, sorted. Throws std::bad_alloc.
std::vector<std::string> endpoint_names(int folder);

/// The counter that all processes share.
class ChangeCounter {
public:
    ChangeCounter() noexcept = default;
    ~ChangeCounter();
    ChangeCounter(const ChangeCounter&) = delete;
    ChangeCounter& operator=(const ChangeCounter&) = delete;

    /// 0 or the negated errno.
    int open(int folder) noexcept;
    void raise() noexcept;
    std::uint32_t value() const noexcept;

private:
    std::uint32_t* counter_ = nullptr;
};

}  // namespace nuv::platform
