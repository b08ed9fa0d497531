// SPDX-License-Identifier: Apache-2.0
#include "nuv/i_watch_base.hpp"

#include <utility>

#include "nuv_platform/csock.h"

namespace nuv::daemon {

IWatchBase::IWatchBase(std::string name) : name_(std::move(name)) {}

IWatchBase::~IWatchBase() { remove_from_csock_impl(); }

void IWatchBase::remove_from_csock() { remove_from_csock_impl(); }

void IWatchBase::add_to_csock() {
    remove_from_csock_impl();
    handle_ = add_to_csock_impl();
}

void IWatchBase::remove_from_csock_impl() noexcept {
    if (handle_ != 0) {
        csock_remove_fd(std::exchange(handle_, 0));
    }
}

}  // namespace nuv::daemon
