// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_serializable_type.hpp"

#include "nuv/channel_types.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {

TEST(JSONSerializableType, KeysAreQuotedAndIntegersGoBySize) {
    bool truth = false;
    EXPECT_EQ(from_json("{}", "\"", truth), R"(Deserialization of bool "\"" failed)");
    // One of the two is no fixed-width type, another one on each machine.
    long number = 0;
    EXPECT_EQ(from_json("-5", "", number), "");
    EXPECT_EQ(to_json(number) + to_json(-5LL), "-5-5");
    EXPECT_EQ(to_json(number, 0), sizeof number == 8 ? "Serialization of std::int64_t failed"
                                                     : "Serialization of std::int32_t failed");
    EXPECT_EQ(to_json(-5LL, 0), "Serialization of std::int64_t failed");
    EXPECT_EQ(to_json(ChannelWidth{9}), "\"INVALID CHANNEL WIDTH 9\"");
}

TEST(JSONSerializableType, CharacterArraysAreStringsUpToTheirNul) {
    EXPECT_EQ(to_json("te\0xt") + to_json<char[2]>({'n', 'o'}), "\"te\"\"no\"");
    EXPECT_EQ(to_json("text", 0), "Serialization of std::string failed");
}

}  // namespace nuv::test
