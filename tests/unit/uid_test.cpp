// SPDX-License-Identifier: Apache-2.0
#include "nuv/uid.hpp"

#include <gtest/gtest.h>

#include "support/json_text.hpp"

using nuv::serialization::string_to_uid;
using nuv::serialization::uid_to_string;
using nuv::serialization::UIDType;

TEST(Uid, HasAPrefixPerType) {
    EXPECT_EQ(uid_to_string(UIDType{0}, 0), "n-0");
    EXPECT_EQ(uid_to_string(UIDType{1}, 7), "ni-7");
    EXPECT_EQ(uid_to_string(UIDType{2}, 4294967295U), "nl-4294967295");
    EXPECT_EQ(uid_to_string(UIDType{3}, 7), "INVALID");
}

TEST(Uid, IsReadAsAScanReadsIt) {
    struct {
        UIDType type;
        const char* text;
        std::uint32_t expected;
    } const rows[] = {
        {UIDType{0}, "n-12", 12},           {UIDType{2}, "nl-4294967295", 4294967295U},
        {UIDType{1}, "ni-7xyz", 7},         {UIDType{1}, "ni- 7", 7},
        {UIDType{1}, "ni--1", 4294967295U}, {UIDType{1}, "ni-4294967296", 0},
    };
    for (const auto& row : rows) {
        std::uint32_t id = 99;
        string_to_uid(row.type, row.text, id);
        EXPECT_EQ(id, row.expected) << row.text;
    }
}

TEST(Uid, RefusesOtherTextsAndLeavesTheTarget) {
    std::uint32_t id = 99;
    const auto failure = [&](int type, const char* text) {
        return nuv::test::message_of([&] { string_to_uid(static_cast<UIDType>(type), text, id); });
    };
    const std::string scan = "Could not convert string to uid, failed scan of string: ";
    EXPECT_EQ(failure(1, "nl-7"), scan + "\"nl-7\"");
    EXPECT_EQ(failure(1, " ni-7"), scan + "\" ni-7\"");
    EXPECT_EQ(failure(0, "n-\"x"), scan + "\"n-\\\"x\"");
    EXPECT_EQ(failure(0, ""), scan + "\"\"");
    EXPECT_EQ(failure(200, "n-7"), "Could not convert string to uid, wrong type: 200");
    EXPECT_EQ(id, 99U);
}
