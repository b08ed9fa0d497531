// SPDX-License-Identifier: Apache-2.0
#include "nuv/printable.hpp"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cwchar>

namespace nuv {

namespace {

/// The first character of a text: its code point and how many octets it takes; 0 for `size` where
/// the text begins with none.
struct Character {
    std::uint32_t code = 0;
    std::size_t size = 0;
};

Character first_character(std::string_view text) {
    const auto octet = [&](std::size_t at) { return static_cast<std::uint8_t>(text[at]); };
    const std::uint8_t lead = octet(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || lead > 0xF4 || text.size() < size) {
        return {};
    }
    std::uint32_t code = lead & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((octet(i) & 0xC0U) != 0x80) {
            return {};
        }
        code = code << 6U | (octet(i) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < least[size] || code > 0x10FFFF || surrogate ? Character{} : Character{code, size};
}

/// Calls `function` with each character and the octets it is made of; those of none come singly.
template <class Function>
void for_each_character(std::string_view text, Function function) {
    while (!text.empty()) {
        const Character character = first_character(text);
        const std::size_t size = character.size == 0 ? 1 : character.size;
        function(character, text.substr(0, size));
        text.remove_prefix(size);
    }
}

}  // namespace

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = first_character(text).size;
        if (size == 0) {
            return false;
        }
        text.remove_prefix(size);
    }
    return true;
}

std::string to_utf8(std::string_view text) {
    std::string result;
    for_each_character(text, [&](Character character, std::string_view octets) {
        result += character.size == 0 ? "\xEF\xBF\xBD" : octets;
    });
    return result;
}

Printable to_printable(std::string_view text) {
    Printable result{};
    for_each_character(text, [&](Character character, std::string_view octets) {
        const int columns =
            character.size == 0 ? -1 : wcwidth(static_cast<wchar_t>(character.code));
        std::array<char, sizeof "\\u10ffff"> number{};
        if (octets == "\\") {
            octets = "\\\\";
        } else if (columns <= 0) {  // no column of its own: nobody would see it
            const bool single = octets.size() == 1;
            std::snprintf(
                number.data(), number.size(), single ? "\\x%02x" : "\\u%04x",
                single ? unsigned{static_cast<std::uint8_t>(octets[0])} : unsigned{character.code});
            octets = number.data();
        }
        result.text += octets;
        result.columns +=
            columns > 0 && octets != "\\\\" ? static_cast<std::size_t>(columns) : octets.size();
    });
    return result;
}

}  // namespace nuv
