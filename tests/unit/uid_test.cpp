// SPDX-License-Identifier: Apache-2.0
#include "nuv/uid.hpp"

#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

using nuv::serialization::UIDType;

TEST(Uid, HasAPrefixPerType) {
    EXPECT_EQ(uid_to_string(UIDType{0}, 0), "n-0");
    EXPECT_EQ(uid_to_string(UIDType{1}, 7), "ni-7");
    EXPECT_EQ(uid_to_string(UIDType{2}, 4294967295U), "nl-4294967295");
    EXPECT_EQ(uid_to_string(UIDType{3}, 7), "INVALID");
}

TEST(Uid, IsReadAsAScanReadsIt) {
    std::uint32_t id = 0;
    const auto read = [&](std::uint8_t type, const char* text) {
        return nuv::test::message_of(
            [&] { return string_to_uid(UIDType{type}, text, id), std::to_string(id); });
    };
    EXPECT_EQ(read(2, "nl-4294967295"), "4294967295");
    EXPECT_EQ(read(0, "n--1"), "4294967295");
    EXPECT_EQ(read(1, "ni-4294967296"), "0");
    EXPECT_EQ(read(1, "ni- 7xyz"), "7");
    const std::string scan = "Could not convert string to uid, failed scan of string: ";
    EXPECT_EQ(read(1, "nl-8"), scan + "\"nl-8\"");
    EXPECT_EQ(read(1, " ni-8"), scan + "\" ni-8\"");
    EXPECT_EQ(read(0, "n-\""), scan + "\"n-\\\"\"");
    EXPECT_EQ(read(200, "n-8"), "Could not convert string to uid, wrong type: 200");
    EXPECT_EQ(id, 7U);
}
