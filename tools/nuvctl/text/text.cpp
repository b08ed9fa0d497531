// SPDX-License-Identifier: Apache-2.0
#include "text/text.hpp"

#include <charconv>

namespace nuvctl {

std::string to_hex(std::span<const std::uint8_t> octets) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * octets.size());
    for (const std::uint8_t octet : octets) {
        text += digits[octet >> 4U];
        text += digits[octet & 0xFU];
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> from_hex(std::string_view text) {
    std::vector<std::uint8_t> octets(text.size() / 2);
    for (std::size_t k = 0; k < octets.size(); ++k) {
        const char* digits = text.data() + 2 * k;
        if (std::from_chars(digits, digits + 2, octets[k], 16).ptr != digits + 2) {
            return std::nullopt;
        }
    }
    return text.size() % 2 == 0 ? std::optional(octets) : std::nullopt;
}

std::string meaning_of(std::string_view name) { return std::string(name) + "_name"; }

std::string hex_of(std::string_view name) { return std::string(name) + "_hex"; }

std::string_view as_text(std::span<const std::uint8_t> octets) {
    return {reinterpret_cast<const char*>(octets.data()), octets.size()};
}

}  // namespace nuvctl
