// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_string.hpp"

#include "tests/support/test.hpp"

using nuv::serialization::json_string_escape;
using nuv::serialization::json_string_unescape;

TEST(JSONString, EscapesEveryByteAsAgreedSignExtendedAbove7F) {
    const std::map<unsigned, char> letters{{8, 'b'},  {9, 't'},   {10, 'n'},   {12, 'f'},
                                           {13, 'r'}, {'"', '"'}, {'\\', '\\'}};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const std::string hex{"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
        const std::string expected = letters.contains(byte) ? std::string{'\\', letters.at(byte)}
                                     : byte < 0x20          ? "\\u00" + hex
                                     : byte < 0x80          ? text
                                                            : "\\uffffff" + hex;
        EXPECT_EQ(json_string_escape(text), expected);
        EXPECT_TRUE(json_string_unescape(expected) == text || byte > 0x7F) << byte;
    }
}
