// SPDX-License-Identifier: Apache-2.0
#include "nuv/uid.hpp"

#include <gtest/gtest.h>

#include "support/json_text.hpp"

using nuv::serialization::uid_to_string;
using nuv::serialization::UIDType;

TEST(Uid, HasAPrefixPerType) {
    EXPECT_EQ(uid_to_string(UIDType{0}, 0), "n-0");
    EXPECT_EQ(uid_to_string(UIDType{1}, 7), "ni-7");
    EXPECT_EQ(uid_to_string(UIDType{2}, 4294967295U), "nl-4294967295");
    EXPECT_EQ(uid_to_string(UIDType{3}, 7), "INVALID");
}

TEST(Uid, IsReadAsAScanReadsIt) {
    const std::string scan = "Could not convert string to uid, failed scan of string: ";
    struct {
        std::uint8_t type;
        const char* text;
        std::string expected;
    } const rows[] = {
        {0, "n-12", "12"},
        {2, "nl-4294967295", "4294967295"},
        {1, "ni-7xyz", "7"},
        {1, "ni- 7", "7"},
        {1, "ni--1", "4294967295"},
        {1, "ni-4294967296", "0"},
        {1, "nl-7", scan + "\"nl-7\""},
        {1, " ni-7", scan + "\" ni-7\""},
        {0, "n-\"", scan + "\"n-\\\"\""},
        {0, "", scan + "\"\""},
        {200, "n-7", "Could not convert string to uid, wrong type: 200"},
    };
    for (const auto& row : rows) {
        std::uint32_t id = 99;
        EXPECT_EQ(nuv::test::message_of([&] {
                      string_to_uid(UIDType{row.type}, row.text, id);
                      return std::to_string(id);
                  }),
                  row.expected);
        EXPECT_TRUE(id == 99 || std::to_string(id) == row.expected);
    }
}
