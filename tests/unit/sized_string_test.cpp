// SPDX-License-Identifier: Apache-2.0
#include "nuv/sized_string.hpp"

#include "tests/support/codecs.hpp"

namespace nuv::test {

TEST(SizedString, WritingPrintsTheLengthOutOfRangeAsNumber) {
    const std::tuple<std::size_t, std::uint8_t, std::uint8_t, const char*> table[] = {
        {0, 0, 32, ""},
        {255, 0, 255, ""},
        {33, 0, 32, "Size 33 is not in the range [0, 32]"},
        {40, 1, 32, "Size 40 is not in the range [1, 32]"},
        {0, 1, 32, "Size 0 is not in the range [1, 32]"},
        {300, 0, 255, "Size 300 is not in the range [0, 255]"},
    };
    for (const auto& [size, min, max, message] : table) {
        const std::string text(size, 'x');
        std::ostringstream os;
        SerializationContext ctx;
        EXPECT_EQ(message_of([&, least = min, most = max] {
                      serialization::serialize_string_with_uint8_size(os, ctx, text, least, most);
                  }),
                  message);
        EXPECT_EQ(os.str(), *message == '\0' ? static_cast<char>(size) + text : "");
    }
}

TEST(SizedString, ReadingPrintsTheLengthOutOfRangeAsCharacter) {
    const std::tuple<std::string, const char*, const char*, int> table[] = {
        {"\x03"
         "abcd",
         "", "abc", 4},
        {"\x41xyz", "Size A is not in the range [1, 32]", "before", 1},
        {std::string(1, '\0'), "Size ", "before", 1},  // a NUL ends what() there
        {"\x03xy", "Deserialization of type char failed.", "before", -1},
        {"", "Deserialization of type std::uint8_t failed.", "before", -1},
    };
    for (const auto& [bytes, message, text, consumed] : table) {
        std::istringstream is(bytes);
        SerializationContext ctx;
        std::string out = "before";
        EXPECT_EQ(message_of([&] {
                      serialization::deserialize_string_with_uint8_size(is, ctx, out, 1, 32);
                  }),
                  message);
        EXPECT_EQ(out, text);
        EXPECT_EQ(is.tellg(), consumed) << "the length octet is consumed";
    }
}

}  // namespace nuv::test
