// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "nuv/export.hpp"
#include "nuv/i_fd_watch_base.hpp"

namespace nuv::daemon {

/// A watch with a handler for each of the four callbacks of csock_add_fd(), in their order. The
/// platform decides what the third and the fourth mean: on Linux, urgent data, and a hang-up or an
/// error. The rules for handlers are those of ISimpleFDWatch.
class NUV_EXPORT IGenericFDWatch : public IFDWatchBase {
public:
    using IFDWatchBase::IFDWatchBase;

protected:
    std::uint32_t add_to_csock_impl() override;

public:
    virtual int on_readable() = 0;
    virtual int on_writable() = 0;
    virtual int on_fd_callback_3() = 0;
    virtual int on_fd_callback_4() = 0;
};

}  // namespace nuv::daemon
