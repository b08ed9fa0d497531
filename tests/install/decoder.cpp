// SPDX-License-Identifier: Apache-2.0
// Decodes an association request from standard input and does nothing else with the library: what a
// static program pays for that.
#include <array>
#include <cstdio>

#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"

int main() {
    std::array<std::uint8_t, 2304> octets{};
    const std::size_t size = std::fread(octets.data(), 1, octets.size(), stdin);
    nuv::serialization::SerializationContext context;
    nuv::ieee802_11::AssocRequestFrame frame;
    try {
        frame.deserialize({octets.data(), size}, context);
    } catch (const nuv::serialization::SerializationException& e) {
        std::puts(e.what());
        return 1;
    }
    return 0;
}
