// SPDX-License-Identifier: Apache-2.0
// Prints whether a peer is in the network of an interface, and how a neighbor sees the device.
#include <iostream>
#include <stdexcept>

#include "nuv/device_id.hpp"
#include "nuv/prefixed_ip_address.hpp"

int main() try {
    const auto own = nuv::PrefixedIPAddress::guess_version_and_parse("192.168.1.77/24");
    const auto peer = nuv::IPAddress::guess_version_and_parse("192.168.1.1");
    std::cout << own.get_network_address() << (own.contains(*peer) ? " has " : " has not ") << *peer
              << '\n';

    const nuv::DeviceID device(nuv::ChassisID::of_mac_address(nuv::MACAddress("02:00:00:00:00:01")),
                               nuv::PortID::of_interface_name(nuv::InterfaceName("wlan0")));
    std::cout << device << '\n';
} catch (const std::invalid_argument& e) {
    std::cerr << e.what() << '\n';
    return 1;
}
