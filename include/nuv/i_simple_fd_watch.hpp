// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "nuv/export.hpp"
#include "nuv/i_fd_watch_base.hpp"

namespace nuv::daemon {

/// A watch with a handler for a readable descriptor and one for a writable descriptor
/// (nuv_platform/csock.h says when they are called).
///
/// Handlers return 0; their result goes back to the event loop unchanged. They may remove and destroy
/// any watch, including their own. They must not throw: an exception that leaves one ends the process.
class NUV_EXPORT ISimpleFDWatch : public IFDWatchBase {
public:
    using IFDWatchBase::IFDWatchBase;

protected:
    std::uint32_t add_to_csock_impl() override;

public:
    virtual int on_readable() = 0;
    virtual int on_writable() = 0;
};

}  // namespace nuv::daemon
