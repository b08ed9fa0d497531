// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/supervisor.hpp"

#include <sys/time.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace nuv::platform {

namespace {

std::string_view socket_name() noexcept {
    const char* const name = std::getenv("NOTIFY_SOCKET");
    return name != nullptr ? name : "";
}

}  // namespace

bool Supervisor::present() noexcept { return !socket_name().empty(); }

int Supervisor::open() noexcept {
    const std::string_view name = socket_name();
    if (name.empty() || name.size() >= sizeof address_.sun_path) {
        return -EINVAL;
    }
    address_ = {};
    address_.sun_family = AF_UNIX;
    std::memcpy(address_.sun_path, name.data(), name.size());
    if (name.front() == '@') {
        address_.sun_path[0] = '\0';
    }
    address_size_ = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());

    FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const timeval limit{.tv_sec = 1, .tv_usec = 0};
    if (!socket || ::setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit) != 0) {
        return -errno;
    }
    try {
        socket_ = UnsharedDescriptor(std::move(socket));
        return 0;
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

int Supervisor::notify(std::string_view text) noexcept {
    // Not connected: a supervisor that starts anew makes another socket of this name.
    const auto* const address = reinterpret_cast<const sockaddr*>(&address_);
    return ::sendto(socket_.get(), text.data(), text.size(), MSG_NOSIGNAL, address,
                    address_size_) >= 0
               ? 0
               : -errno;
}

}  // namespace nuv::platform
