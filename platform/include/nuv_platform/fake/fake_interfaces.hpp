// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

/// The network interfaces of the test double: at first none. Refusable: `if_get_hwaddr`.
class NUV_PLATFORM_EXPORT FakeInterfaces final : public FakeService {
public:
    explicit FakeInterfaces(std::vector<std::string>& shared_journal);

    /// Gives the interface `ifname` a hardware address, in transmission order.
    void set_hwaddr(const std::string& ifname, const std::array<std::uint8_t, 6>& address);
    /// The address, or null without such an interface.
    const std::array<std::uint8_t, 6>* hwaddr(const std::string& ifname) const;

private:
    std::map<std::string, std::array<std::uint8_t, 6>> hwaddrs_;
};

}  // namespace nuv::platform
