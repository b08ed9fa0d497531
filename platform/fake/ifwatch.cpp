// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/ifwatch.h"

#include <algorithm>

#include "nuv_platform/fake/fake_platform.hpp"

namespace nuv::platform {

FakeInterfaces::FakeInterfaces(std::vector<std::string>& shared_journal)
    : FakeService(shared_journal, {"if_get_hwaddr"}) {}

void FakeInterfaces::set_hwaddr(const std::string& ifname,
                                const std::array<std::uint8_t, 6>& address) {
    hwaddrs_[ifname] = address;
}

const std::array<std::uint8_t, 6>* FakeInterfaces::hwaddr(const std::string& ifname) const {
    const auto found = hwaddrs_.find(ifname);
    return found == hwaddrs_.end() ? nullptr : &found->second;
}

}  // namespace nuv::platform

extern "C" int if_get_hwaddr(const char* ifname, uint8_t out[6]) {
    auto* const fake = nuv::platform::FakePlatform::current();
    if (fake == nullptr) {
        return -1;
    }
    if (const auto refusal = fake->interfaces().take_failure(__func__)) {
        return *refusal;
    }
    const auto* const address = fake->interfaces().hwaddr(ifname);
    if (address == nullptr) {
        return -1;
    }
    std::copy(address->begin(), address->end(), out);
    return 0;
}
