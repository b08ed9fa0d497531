// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_string.hpp"

#include <gtest/gtest.h>

#include <array>

using nuv::serialization::json_string_escape;
using nuv::serialization::json_string_unescape;

TEST(JSONString, EscapesEveryByteAsAgreedSignExtendedAbove7F) {
    constexpr std::array CONTROLS{
        "\\u0000", "\\u0001", "\\u0002", "\\u0003", "\\u0004", "\\u0005", "\\u0006", "\\u0007",
        "\\b",     "\\t",     "\\n",     "\\u000b", "\\f",     "\\r",     "\\u000e", "\\u000f",
        "\\u0010", "\\u0011", "\\u0012", "\\u0013", "\\u0014", "\\u0015", "\\u0016", "\\u0017",
        "\\u0018", "\\u0019", "\\u001a", "\\u001b", "\\u001c", "\\u001d", "\\u001e", "\\u001f"};
    constexpr const char* HEX = "0123456789abcdef";
    for (std::size_t byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const std::string expected =
            byte < 0x20    ? CONTROLS[byte]
            : byte == '"'  ? "\\\""
            : byte == '\\' ? "\\\\"
            : byte < 0x80  ? text
                           : std::string("\\uffffff") + HEX[byte / 16] + HEX[byte % 16];
        EXPECT_EQ(json_string_escape(text), expected) << byte;
        if (byte < 0x80) {
            EXPECT_EQ(json_string_unescape(expected), text) << byte;
        }
    }
}

TEST(JSONString, UnescapesToSingleBytes) {
    struct {
        const char* text;
        const char* expected;
    } const rows[] = {
        {"a\\u0041b", "aAb"},
        {"\\u00e9\\u12E9", "\xE9\xE9"},
        {"\\u12zz", "u12zz"},
        {"\\u123", "u123"},
        {"\\u-123", "u-123"},
        {"\\uffffffc3",
         "\xFF"
         "ffc3"},
        {"\\\\n\\/\\\"\\x", "\\n/\"x"},
        {"end\\", "end\\"},
        {"\\", "\\"},
        {"", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(json_string_unescape(row.text), row.expected) << row.text;
    }
}
