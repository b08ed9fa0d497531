// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <string_view>

#include "platform/linux/fork.hpp"

namespace nuv::platform {

/// The socket of the supervisor that started this process, named by NOTIFY_SOCKET: a path, or behind
/// `@` an abstract name.
class Supervisor {
public:
    /// Whether there is one.
    static bool present() noexcept;

    /// 0, or the negated errno.
    int open() noexcept;
    /// Never in a forked child.
    bool is_open() const noexcept { return static_cast<bool>(socket_); }
    /// Sends assignments, one per line. Waits at most a second for room. 0, or the negated errno.
    int notify(std::string_view text) noexcept;
    void close() noexcept { socket_.reset(); }

private:
    UnsharedDescriptor socket_;
    sockaddr_un address_{};
    socklen_t address_size_ = 0;
};

}  // namespace nuv::platform
