// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nuv::test {

using Octets = std::vector<std::uint8_t>;

/// The octets of a text such as "24 04 3064": hexadecimal digits in pairs, blanks between them.
/// Throws std::invalid_argument for any other text.
inline Octets from_hex(std::string_view text) {
    std::string digits(text);
    std::erase(digits, ' ');
    Octets octets;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        const std::string pair = digits.substr(at, 2);
        if (pair.size() != 2 ||
            pair.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
            throw std::invalid_argument("no octets");
        }
        octets.push_back(static_cast<std::uint8_t>(std::stoul(pair, nullptr, 16)));
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
