// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/ifwatch.h"

#include <algorithm>

#include "nuv_platform/fake.hpp"

extern "C" int if_get_hwaddr(const char* ifname, uint8_t out[6]) {
    const auto* fake = nuv::platform::FakePlatform::current();
    const auto* address = fake != nullptr ? fake->hwaddr(ifname) : nullptr;
    if (address == nullptr) {
        return -1;
    }
    std::copy(address->begin(), address->end(), out);
    return 0;
}
