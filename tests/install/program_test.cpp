// SPDX-License-Identifier: Apache-2.0
// Runs on the fake: through the library, an interface that only the fake knows has an address.
#include "nuv/mac_address.hpp"
#include "nuv_platform/fake/fake_platform.hpp"

int main() {
    const nuv::MACAddress expected("02:03:05:07:0B:0D");
    nuv::platform::FakePlatform fake;
    fake.interfaces().set_hwaddr("wan0", expected.octets());
    return nuv::get_mac_for_ifname(nuv::InterfaceName("wan0")) == expected ? 0 : 1;
}
