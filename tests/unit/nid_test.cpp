// SPDX-License-Identifier: Apache-2.0
#include "nuv/nid.hpp"

#include <gtest/gtest.h>

#include "nuv/binary_serializable_type.hpp"
#include "support/json_text.hpp"

namespace nuv::test {

using plc::NID;

TEST(NID, IsReadAsAScanOf20CharactersReadsIt) {
    const auto read = [](const std::string& text) {
        NID nid({9, 9, 9, 9, 9, 9, 9});
        const std::string failure = from_json("{\"n\":\"" + text + "\"}", "n", nid);
        return failure + to_json(nid);
    };
    EXPECT_EQ(read("01:ab:03:04:05:06:fF"), "\"01:AB:03:04:05:06:FF\"");
    EXPECT_EQ(read(" 1:-1:+3:0x:05:06:07xyz"), "\"01:FF:03:00:05:06:07\"");
    for (const char* text : {"1:02:03:04:05:06:07", "01:02:03:04:05:06", "", "01-02"}) {
        EXPECT_EQ(read(text),
                  "Deserialization of NID \"n\" failed, got sscanf read error"
                  "\"09:09:09:09:09:09:09\"");
    }
}

TEST(NID, CodecsFailByName) {
    NID nid({1, 2, 3, 4, 5, 6, 7});
    SerializationContext ctx;
    std::ostringstream os;
    serialization::BinarySerializableType<NID>::serialize(os, ctx, nid);
    EXPECT_EQ(os.str(), "\x01\x02\x03\x04\x05\x06\x07");
    EXPECT_EQ(to_json(nid, 0), "Serialization of std::string failed");
    EXPECT_EQ(from_json("{}", "n", nid), "Deserialization of NID \"n\" failed, got: \"\"");
    EXPECT_EQ(nid, NID({1, 2, 3, 4, 5, 6, 7}));
}

}  // namespace nuv::test
