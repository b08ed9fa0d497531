// SPDX-License-Identifier: Apache-2.0
// Runs on the fake, although nuv::nuv also brings the Linux platform: an interface that only the
// fake knows has an address, and the loopback interface, which Linux has, is not there.
#include <array>
#include <cstdint>

#include "nuv_platform/fake.hpp"
#include "nuv_platform/ifwatch.h"

int main() {
    const std::array<std::uint8_t, 6> expected{2, 3, 5, 7, 11, 13};
    nuv::platform::FakePlatform fake;
    fake.set_hwaddr("wan0", expected);
    std::array<std::uint8_t, 6> address{};
    if (if_get_hwaddr("wan0", address.data()) != 0 || address != expected) {
        return 1;
    }
    return if_get_hwaddr("lo", address.data()) < 0 ? 0 : 1;
}
