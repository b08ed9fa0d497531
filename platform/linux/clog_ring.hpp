// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "nuv_platform/clog_ring.h"
#include "platform/common/clog_core.hpp"

namespace nuv::platform::clog {

/// A ring in shared memory; its form is told in clog_ring.h. It is removed with this object, which
/// lives as long as the output: a process that ends without removing the output leaves the ring.
/// Forked children neither write to it nor remove it, except the one that becomes the daemon.
class RingSink final : public Sink {
public:
    /// Throws std::system_error; EBUSY when another output writes to the ring.
    RingSink(const std::string& name, std::uint32_t size);
    ~RingSink() override;

    void write(const clogger_msg_info& info, std::string_view line) override;
    bool inherited() const override;
    void own(bool own) override;

private:
    void map();
    char* text() const { return reinterpret_cast<char*>(ring_ + 1); }

    const std::string object_;
    pid_t owner_;
    const std::uint32_t size_;  // not read from the memory that others can write to
    const int fd_;              // holds the lock
    clogger_ring* ring_ = nullptr;
};

}  // namespace nuv::platform::clog
