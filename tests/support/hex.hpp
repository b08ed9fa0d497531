// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "nuv/binary_serializable_type.hpp"

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
            octets.push_back(static_cast<std::uint8_t>(std::strtoul(digits.c_str(), nullptr, 16)));
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

/// What the codec of T writes for `value`, as hex.
template <class T>
std::string written(const T& value) {
    std::ostringstream os;
    serialization::SerializationContext ctx;
    serialization::BinarySerializableType<T>::serialize(os, ctx, value);
    const std::string bytes = os.str();
    return to_hex({bytes.begin(), bytes.end()});
}

/// The message of the SerializationException that `function` throws, "" if it throws none.
template <class Function>
std::string message_of(Function function) {
    try {
        function();
    } catch (const serialization::SerializationException& e) {
        return e.what();
    }
    return {};
}

}  // namespace nuv::test
