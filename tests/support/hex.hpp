// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nuv::test {

using Octets = std::vector<std::uint8_t>;

/// The octets of a text such as "24 04 3064": hexadecimal digits in pairs, blanks between them.
inline Octets from_hex(std::string_view text) {
    Octets octets;
    std::string digits;
    for (const char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c)) != 0) {
            digits.push_back(c);
        }
        if (digits.size() == 2) {
            octets.push_back(static_cast<std::uint8_t>(std::stoul(digits, nullptr, 16)));
            digits.clear();
        }
    }
    return octets;
}

/// "24 04 30 64": what a mismatch shows.
inline std::string to_hex(const Octets& octets) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t octet : octets) {
        text += text.empty() ? "" : " ";
        text += digits[octet >> 4U];
        text += digits[octet & 0xFU];
    }
    return text;
}

inline std::string to_string(const Octets& octets) { return {octets.begin(), octets.end()}; }

}  // namespace nuv::test
