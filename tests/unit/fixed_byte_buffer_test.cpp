// SPDX-License-Identifier: Apache-2.0
#include "nuv/fixed_byte_buffer.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

using Buffer = nuv::FixedByteBuffer<4>;

TEST(FixedByteBuffer, IsZeroBehindItsSize) {
    Buffer buffer("abcd");
    buffer.assign("xy");
    EXPECT_EQ(buffer.to_string(), "xy");
    EXPECT_TRUE(std::all_of(buffer.end(), buffer.begin() + Buffer::capacity(),
                            [](std::uint8_t byte) { return byte == 0; }));
    buffer.resize(1);
    buffer.resize(3);
    EXPECT_EQ(buffer, Buffer(std::string_view("x\0\0", 3)));
    buffer.assign(buffer.string_view().substr(1));
    EXPECT_EQ(buffer.string_view(), std::string_view("\0\0", 2));
    buffer.clear();
    EXPECT_TRUE(buffer.empty());
}

TEST(FixedByteBuffer, RefusesWhatIsTooLongAndStaysAsItWas) {
    const std::vector<std::uint8_t> bytes{1, 2, 3, 4, 5};
    Buffer buffer("ab");
    const auto refused = [](auto&& function) {
        try {
            function();
        } catch (const std::invalid_argument& exception) {
            return std::string(exception.what());
        }
        return std::string();
    };
    EXPECT_EQ(refused([&] { buffer.assign("abcde"); }), "Argument too long");
    EXPECT_EQ(refused([&] { buffer.assign(bytes); }), "Argument too long");
    EXPECT_EQ(refused([&] { buffer.resize(5); }), "Argument too long");
    EXPECT_EQ(refused([&] { Buffer{bytes}; }), "Argument too long");
    EXPECT_EQ(buffer.to_string(), "ab");
}

TEST(FixedByteBuffer, OrdersByTextThenLength) {
    const std::vector<Buffer> ascending{
        Buffer(),     Buffer("a"), Buffer(std::string_view("a\0", 2)),
        Buffer("ab"), Buffer("b"), Buffer("\x80")};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(ascending[i] <=> ascending[j], i <=> j);
            EXPECT_EQ(ascending[i] == ascending[j], i == j);
        }
    }
    EXPECT_EQ(std::hash<Buffer>()(Buffer("ab")), std::hash<Buffer>()(Buffer("ab")));
    EXPECT_NE(std::hash<Buffer>()(Buffer("a")), std::hash<Buffer>()(ascending[2]));
}

TEST(FixedByteBuffer, IsWrittenRaw) {
    std::ostringstream os;
    os << nuv::SSID("a\"\n") << nuv::InterfaceName("eth0");
    EXPECT_EQ(os.str(), "a\"\neth0");
}
