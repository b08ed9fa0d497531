// SPDX-License-Identifier: Apache-2.0
// Reads the body of an association request and prints the network and the security.
#include <array>
#include <iostream>

#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"
#include "nuv/ieee802_11/rsn_security.hpp"
#include "nuv/printable.hpp"

int main() {
    constexpr std::array<std::uint8_t, 42> body{
        0x31, 0x04, 0x0a, 0x00,             // capabilities, listen interval
        0x00, 0x04, 'm',  'e',  's',  'h',  // SSID
        0x01, 0x08, 0x82, 0x84, 0x8b, 0x96, 0x0c, 0x12, 0x18, 0x24,              // supported rates
        0x30, 0x14, 0x01, 0x00, 0x00, 0x0f, 0xac, 0x04, 0x01, 0x00, 0x00, 0x0f,  // RSN
        0xac, 0x04, 0x01, 0x00, 0x00, 0x0f, 0xac, 0x08, 0xc0, 0x00};
    nuv::serialization::SerializationContext context;
    nuv::ieee802_11::AssocRequestFrame frame;
    try {
        frame.deserialize(body, context);
    } catch (const nuv::serialization::SerializationException& e) {
        std::cerr << "not an association request: " << e.what() << '\n';
        return 1;
    }
    std::cout << "network: " << nuv::to_printable(frame.get_ssid().string_view()).text << '\n';
    if (const auto* rsn = frame.get_optional_element<nuv::ieee802_11::IEEE802_11_RSNElement>()) {
        std::cout << "security: " << security_from_rsn_element(*rsn) << '\n';
    }
}
