// SPDX-License-Identifier: Apache-2.0
#include "nuv/i_simple_fd_watch.hpp"

#include "nuv_platform/csock.h"

namespace nuv::daemon {

namespace {

template <int (ISimpleFDWatch::*Handler)()>
int trampoline(int /*fd*/, void* ctx) noexcept {
    return (static_cast<ISimpleFDWatch*>(ctx)->*Handler)();
}

}  // namespace

std::uint32_t ISimpleFDWatch::add_to_csock_impl() {
    const std::uint32_t handle =
        csock_add_fd(get_fd(), get_watch_name().c_str(), trampoline<&ISimpleFDWatch::on_readable>,
                     trampoline<&ISimpleFDWatch::on_writable>, nullptr, nullptr, 0, this);
    csock_fd_blocking(handle);
    return handle;
}

}  // namespace nuv::daemon
