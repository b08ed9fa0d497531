// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/fake/fake_platform.hpp"

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
    for (const auto& leftover : leftovers()) {
        std::cerr << "FakePlatform: never undone: " << leftover << '\n';
    }
    instance = nullptr;
}

std::vector<std::string> FakePlatform::leftovers() const {
    std::vector<std::string> all;
    for (const auto& leftovers : {log_.leftovers(), commands_.leftovers(), ipc_.leftovers(),
                                  watchdog_.leftovers(), loop_.leftovers()}) {
        all.insert(all.end(), leftovers.begin(), leftovers.end());
    }
    return all;
}

FakePlatform* FakePlatform::current() noexcept { return instance; }

}  // namespace nuv::platform
