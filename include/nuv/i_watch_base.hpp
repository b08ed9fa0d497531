// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "nuv/export.hpp"

namespace nuv::daemon {

/// Something that the main loop watches through one registration with the event loop (csock). It
/// leaves the event loop when it is destroyed. Its name is for people.
class NUV_EXPORT IWatchBase {
public:
    explicit IWatchBase(std::string name);
    IWatchBase(const IWatchBase&) = delete;
    IWatchBase& operator=(const IWatchBase&) = delete;
    virtual ~IWatchBase();

    virtual void remove_from_csock();
    /// Registers the watch. Removes an existing registration first.
    void add_to_csock();

protected:
    /// Registers the watch and returns the handle, 0 on failure.
    virtual std::uint32_t add_to_csock_impl() = 0;
    void remove_from_csock_impl() noexcept;

    const std::string& get_watch_name() const noexcept { return name_; }

private:
    std::string name_;
    std::uint32_t handle_ = 0;  // 0: not registered
};

}  // namespace nuv::daemon
