// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_cipher_suite.hpp"

#include <charconv>
#include <cstdio>

namespace nuv::ieee802_11 {

std::string IEEE802_11_CipherSuite::to_string() const {
    std::array<char, sizeof "00-0F-AC:255"> text{};
    std::snprintf(text.data(), text.size(), "%02X-%02X-%02X:%u", unsigned{oui[0]}, unsigned{oui[1]},
                  unsigned{oui[2]}, unsigned{type});
    return text.data();
}

bool IEEE802_11_CipherSuite::parse_string(std::string_view text) noexcept {
    IEEE802_11_CipherSuite suite;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::uint8_t* octet : {&suite.oui[0], &suite.oui[1], &suite.oui[2], &suite.type}) {
        const auto [next, error] = std::from_chars(at, end, *octet, octet == &suite.type ? 10 : 16);
        if (error != std::errc()) {
            return false;
        }
        at = next == end ? end : next + 1;
    }
    // Separators, digits and case are as they are written, or the text is another one.
    if (suite.to_string() != text) {
        return false;
    }
    *this = suite;
    return true;
}

}  // namespace nuv::ieee802_11
