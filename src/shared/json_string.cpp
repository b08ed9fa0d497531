// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_string.hpp"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace nuv::serialization {

namespace {

/// Bytes that have a letter of their own behind the backslash.
struct Escape {
    char byte;
    char letter;
};
constexpr std::array<Escape, 5> CONTROL_ESCAPES{
    {{'\b', 'b'}, {'\t', 't'}, {'\n', 'n'}, {'\f', 'f'}, {'\r', 'r'}}};

void append_escaped(std::string& out, char byte) {
    for (const Escape& escape : CONTROL_ESCAPES) {
        if (byte == escape.byte) {
            out += {'\\', escape.letter};
            return;
        }
    }
    if (byte == '"' || byte == '\\') {
        out += {'\\', byte};
    } else if (const auto value = static_cast<signed char>(byte); value <= 0x1F) {
        // The sign is extended on purpose: readers of these texts expect \uffffffXX above 0x7F.
        std::array<char, sizeof "\\uffffffff"> text{};
        std::snprintf(text.data(), text.size(), "\\u%04x",
                      static_cast<unsigned>(static_cast<int>(value)));
        out += text.data();
    } else {
        out += byte;
    }
}

char unescaped(char letter) {
    for (const Escape& escape : CONTROL_ESCAPES) {
        if (letter == escape.letter) {
            return escape.byte;
        }
    }
    return letter;
}

}  // namespace

std::string json_string_escape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (const char byte : text) {
        append_escaped(out, byte);
    }
    return out;
}

std::string json_string_unescape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        ++i;
        const std::string_view digits = std::string_view(text).substr(i + 1, 4);
        std::uint16_t code = 0;
        const char* end =
            std::from_chars(digits.data(), digits.data() + digits.size(), code, 16).ptr;
        if (text[i] == 'u' && end == digits.data() + 4) {
            out += static_cast<char>(code & 0xFFU);  // one byte and no UTF-8, by agreement
            i += 4;
        } else {
            out += unescaped(text[i]);
        }
    }
    return out;
}

}  // namespace nuv::serialization
