// SPDX-License-Identifier: Apache-2.0
#include "nuv/sized_string.hpp"

#include <gtest/gtest.h>

#include "support/codecs.hpp"

namespace nuv::serialization {
namespace {

using test::message_of;

std::string write(const std::string& s, std::uint8_t min, std::uint8_t max) {
    std::ostringstream os;
    SerializationContext ctx;
    EXPECT_EQ(message_of([&] { serialize_string_with_uint8_size(os, ctx, s, min, max); }), "");
    return os.str();
}

TEST(SizedString, IsALengthOctetAndTheBytes) {
    EXPECT_EQ(write("", 0, 32), std::string(1, '\0'));
    EXPECT_EQ(write(std::string(255, 'x'), 0, 255), "\xFF" + std::string(255, 'x'));

    std::istringstream is(
        "\x03"
        "abcd");
    SerializationContext ctx;
    std::string out = "before";
    deserialize_string_with_uint8_size(is, ctx, out, 3, 3);
    EXPECT_EQ(out, "abc");
    EXPECT_EQ(is.tellg(), 4);
}

TEST(SizedString, WritingPrintsTheLengthOutOfRangeAsNumber) {
    const struct {
        std::size_t size;
        std::uint8_t min, max;
        const char* message;
    } cases[] = {
        {33, 0, 32, "Size 33 is not in the range [0, 32]"},
        {40, 1, 32, "Size 40 is not in the range [1, 32]"},
        {0, 1, 32, "Size 0 is not in the range [1, 32]"},
        {300, 0, 255, "Size 300 is not in the range [0, 255]"},
    };
    for (const auto& c : cases) {
        std::ostringstream os;
        SerializationContext ctx;
        EXPECT_EQ(message_of([&] {
                      serialize_string_with_uint8_size(os, ctx, std::string(c.size, 'x'), c.min,
                                                       c.max);
                  }),
                  c.message);
        EXPECT_EQ(os.str(), "") << "nothing is written";
    }
}

TEST(SizedString, ReadingPrintsTheLengthOutOfRangeAsCharacter) {
    const struct {
        std::string bytes;
        const char* message;
        int consumed;
    } cases[] = {
        {"\x41xyz", "Size A is not in the range [1, 32]", 1},
        {std::string(1, '\0'), "Size ", 1},  // a NUL ends what() there
        {"\x03xy", "Deserialization of type char failed.", -1},
        {"", "Deserialization of type std::uint8_t failed.", -1},
    };
    for (const auto& c : cases) {
        std::istringstream is(c.bytes);
        SerializationContext ctx;
        std::string out = "before";
        EXPECT_EQ(message_of([&] { deserialize_string_with_uint8_size(is, ctx, out, 1, 32); }),
                  c.message);
        EXPECT_EQ(out, "before");
        EXPECT_EQ(is.tellg(), c.consumed) << "the length octet is consumed";
    }
}

}  // namespace
}  // namespace nuv::serialization
