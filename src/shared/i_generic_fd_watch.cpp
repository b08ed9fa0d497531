// SPDX-License-Identifier: Apache-2.0
#include "nuv/i_generic_fd_watch.hpp"

#include "nuv_platform/csock.h"

namespace nuv::daemon {

namespace {

template <int (IGenericFDWatch::*Handler)()>
int trampoline(int /*fd*/, void* ctx) noexcept {
    return (static_cast<IGenericFDWatch*>(ctx)->*Handler)();
}

}  // namespace

std::uint32_t IGenericFDWatch::add_to_csock_impl() {
    const std::uint32_t handle = csock_add_fd(
        get_fd(), get_watch_name().c_str(), trampoline<&IGenericFDWatch::on_readable>,
        trampoline<&IGenericFDWatch::on_writable>, trampoline<&IGenericFDWatch::on_fd_callback_3>,
        trampoline<&IGenericFDWatch::on_fd_callback_4>, 0, this);
    csock_fd_blocking(handle);
    return handle;
}

}  // namespace nuv::daemon
