// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/fake.hpp"

#include <cassert>

namespace nuv::platform {

namespace {
FakePlatform* instance = nullptr;
}

FakePlatform::FakePlatform() {
    assert(instance == nullptr);
    instance = this;
}

FakePlatform::~FakePlatform() { instance = nullptr; }

FakePlatform* FakePlatform::current() noexcept { return instance; }

void FakePlatform::set_hwaddr(const std::string& ifname,
                              const std::array<std::uint8_t, 6>& address) {
    hwaddrs_[ifname] = address;
}

const std::array<std::uint8_t, 6>* FakePlatform::hwaddr(const std::string& ifname) const {
    const auto found = hwaddrs_.find(ifname);
    return found == hwaddrs_.end() ? nullptr : &found->second;
}

}  // namespace nuv::platform
