// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "nuv_platform/export.h"

namespace nuv::platform {

/// The test double of the platform: one object behind the contract's C functions. A test constructs
/// it, tells it what to answer, and asks it what the library did. At most one lives at a time;
/// without one every call is answered as by a machine that has nothing. Single-threaded.
class NUV_PLATFORM_EXPORT FakePlatform {
public:
    FakePlatform();
    ~FakePlatform();
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    /// The living instance, or null.
    static FakePlatform* current() noexcept;

    /// Gives the interface `ifname` a hardware address.
    void set_hwaddr(const std::string& ifname, const std::array<std::uint8_t, 6>& address);
    const std::array<std::uint8_t, 6>* hwaddr(const std::string& ifname) const;

private:
    std::map<std::string, std::array<std::uint8_t, 6>> hwaddrs_;
};

}  // namespace nuv::platform
