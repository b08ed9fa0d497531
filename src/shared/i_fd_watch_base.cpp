// SPDX-License-Identifier: Apache-2.0
#include "nuv/i_fd_watch_base.hpp"

#include <utility>

namespace nuv::daemon {

IFDWatchBase::IFDWatchBase(int fd, std::string name) : IWatchBase(std::move(name)), fd_(fd) {}

void IFDWatchBase::remove_from_csock() {
    IWatchBase::remove_from_csock();
    remove_from_csock_impl();
}

}  // namespace nuv::daemon
