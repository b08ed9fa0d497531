// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/fake.hpp"

#include <cassert>
#include <iostream>

namespace nuv::platform {

namespace {
FakePlatform* instance = nullptr;
}

FakePlatform::FakePlatform() {
    assert(instance == nullptr);
    instance = this;
}

FakePlatform::~FakePlatform() {
    for (const auto& call : log_.leftovers()) {
        std::cerr << "FakePlatform: never undone: " << call << '\n';
    }
    instance = nullptr;
}

FakePlatform* FakePlatform::current() noexcept { return instance; }

void FakePlatform::fail_next(const std::string& function, int result, unsigned times) {
    failures_[function] = {result, times};
}

std::optional<int> FakePlatform::take_failure(const std::string& function) {
    const auto found = failures_.find(function);
    if (found == failures_.end() || found->second.times == 0) {
        return std::nullopt;
    }
    --found->second.times;
    return found->second.result;
}

void FakePlatform::set_hwaddr(const std::string& ifname,
                              const std::array<std::uint8_t, 6>& address) {
    hwaddrs_[ifname] = address;
}

const std::array<std::uint8_t, 6>* FakePlatform::hwaddr(const std::string& ifname) const {
    const auto found = hwaddrs_.find(ifname);
    return found == hwaddrs_.end() ? nullptr : &found->second;
}

}  // namespace nuv::platform
