// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_cipher_suite.hpp"

#include <cstdio>

namespace nuv::ieee802_11 {

std::string IEEE802_11_CipherSuite::to_string() const {
    std::array<char, sizeof "00-0F-AC:255"> text{};
    std::snprintf(text.data(), text.size(), "%02X-%02X-%02X:%u", unsigned{oui[0]}, unsigned{oui[1]},
                  unsigned{oui[2]}, unsigned{type});
    return text.data();
}

}  // namespace nuv::ieee802_11
