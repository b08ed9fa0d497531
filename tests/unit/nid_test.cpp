// SPDX-License-Identifier: Apache-2.0
#include "nuv/nid.hpp"

#include <gtest/gtest.h>

#include "nuv/binary_serializable_type.hpp"
#include "support/json_text.hpp"

using nuv::plc::NID;
using nuv::test::from_json;

TEST(NID, AcceptsWhatAScanOf20CharactersAccepts) {
    for (const std::string text :
         {"01:02:03:04:05:06:07", " 1:02:03:04:05:06:07:08", "+1:02:03:04:05:06:07xyz",
          "-1:02:03:04:05:06:07", "fF:02:03:04:05:06:07", "0x:02:03:04:05:06:07"}) {
        const std::uint8_t first = text[1] == '1' && text[0] != '-' ? 1 : text[1] == 'x' ? 0 : 0xFF;
        NID nid;
        EXPECT_EQ(from_json('"' + text + '"', "", nid), "");
        EXPECT_EQ(nid, NID({first, 2, 3, 4, 5, 6, 7})) << text;
    }
}

TEST(NID, RefusedTextLeavesTheTarget) {
    NID nid({9, 9, 9, 9, 9, 9, 9});
    for (const std::string text : {"1:02:03:04:05:06:07", "01:02:03:04:05:06", "", "01-02"}) {
        EXPECT_EQ(from_json("{\"n\":\"" + text + "\"}", "n", nid),
                  "Deserialization of NID \"n\" failed, got sscanf read error");
    }
    EXPECT_EQ(from_json("{}", "n", nid), "Deserialization of NID \"n\" failed, got: \"\"");
    EXPECT_EQ(nid, NID({9, 9, 9, 9, 9, 9, 9}));
}

TEST(NID, IsWrittenInUpperCaseOrAsOctets) {
    const NID nid({0x01, 0xAB, 3, 4, 5, 6, 0xFF});
    nuv::serialization::SerializationContext ctx;
    std::ostringstream os;
    nuv::serialization::BinarySerializableType<NID>::serialize(os, ctx, nid);
    EXPECT_EQ(os.str(), "\x01\xAB\x03\x04\x05\x06\xFF");
    EXPECT_EQ(nuv::test::to_json(nid), "\"01:AB:03:04:05:06:FF\"");
    EXPECT_EQ(nuv::test::to_json(nid, 0), "Serialization of std::string failed");
}
