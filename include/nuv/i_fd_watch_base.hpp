// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "nuv/export.hpp"
#include "nuv/i_watch_base.hpp"

namespace nuv::daemon {

/// A watch on a file descriptor, which it never closes: the code that opened the descriptor closes it,
/// after the watch has left the event loop.
class NUV_EXPORT IFDWatchBase : public IWatchBase {
public:
    IFDWatchBase(int fd, std::string name);

    /// Removes the registration and forgets the descriptor.
    void remove_from_csock() override;

    /// -1 without a descriptor.
    int get_fd() const noexcept { return fd_; }

protected:
    /// Only for a watch that is not registered.
    void set_fd(int fd) noexcept { fd_ = fd; }
    /// Forgets the descriptor.
    void remove_from_csock_impl() noexcept { fd_ = -1; }

private:
    int fd_;
};

}  // namespace nuv::daemon
