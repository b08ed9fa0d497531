// SPDX-License-Identifier: Apache-2.0
#include "nuv/fixed_byte_buffer.hpp"

#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

using Buffer = nuv::FixedByteBuffer<4>;

TEST(FixedByteBuffer, IsZeroBehindItsSize) {
    Buffer buffer("abcd");
    buffer.assign("xy");
    EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + 4), std::string("xy\0\0", 4));
    buffer.resize(1);
    buffer.resize(3);
    EXPECT_EQ(buffer.to_string(), std::string("x\0\0", 3));
    buffer.assign(buffer.span().subspan(1));
    EXPECT_EQ(buffer, Buffer(std::string_view("\0\0", 2)));
}

TEST(FixedByteBuffer, RefusesWhatIsTooLongAndStaysAsItWas) {
    Buffer buffer("ab");
    const auto failure = [](auto&& function) {
        return nuv::test::message_of<std::invalid_argument>([&] { function(); });
    };
    EXPECT_EQ(failure([&] { buffer.assign(std::vector<std::uint8_t>(5)); }), "Argument too long");
    EXPECT_EQ(failure([&] { buffer.resize(5); }), "Argument too long");
    EXPECT_EQ(failure([&] { Buffer("abcde"); }), "Argument too long");
    EXPECT_EQ(buffer, Buffer("ab"));
}

TEST(FixedByteBuffer, OrdersByTextThenLengthAndIsWrittenRaw) {
    const Buffer ascending[] = {Buffer(),     Buffer("a"), Buffer(std::string_view("a\0", 2)),
                                Buffer("ab"), Buffer("b"), Buffer("\x80")};
    for (std::size_t i = 0; i < 36; ++i) {
        EXPECT_EQ(ascending[i / 6] <=> ascending[i % 6], i / 6 <=> i % 6);
        EXPECT_EQ(ascending[i / 6] == ascending[i % 6], i / 6 == i % 6);
    }
    EXPECT_NE(std::hash<Buffer>()(ascending[1]), std::hash<Buffer>()(ascending[2]));
    std::ostringstream os;
    os << Buffer("a\"\n");
    EXPECT_EQ(os.str(), "a\"\n");
}
