// SPDX-License-Identifier: Apache-2.0
#include "nuv/nid.hpp"

#include <gtest/gtest.h>

#include "support/json_text.hpp"

using nuv::plc::NID;

TEST(NID, AcceptsWhatAScanOf20CharactersAccepts) {
    struct {
        const char* text;
        std::uint8_t first_octet;
    } const rows[] = {
        {"01:02:03:04:05:06:07", 0x01},    {"fF:02:03:04:05:06:07", 0xFF},
        {"01:02:03:04:05:06:07:08", 0x01}, {"01:02:03:04:05:06:07xyz", 0x01},
        {" 1:02:03:04:05:06:07", 0x01},    {"+1:02:03:04:05:06:07", 0x01},
        {"-1:02:03:04:05:06:07", 0xFF},    {"0x:02:03:04:05:06:07", 0x00},
    };
    for (const auto& row : rows) {
        NID nid;
        nuv::test::read_json(std::string("\"") + row.text + "\"", "", nid);
        EXPECT_EQ(nid, NID({row.first_octet, 2, 3, 4, 5, 6, 7})) << row.text;
    }
}

TEST(NID, IsWrittenInUpperCase) {
    const NID nid({0x01, 0xAB, 3, 4, 5, 6, 0xFF});
    EXPECT_EQ(nuv::test::json_of([&](auto& stream) { nuv::test::write_json(stream, nid); }),
              "\"01:AB:03:04:05:06:FF\"");
    EXPECT_EQ(nuv::test::write_failure(nid), "Serialization of std::string failed");
}

TEST(NID, RefusedTextLeavesTheTarget) {
    NID nid({9, 9, 9, 9, 9, 9, 9});
    const NID before = nid;
    for (const char* text : {"1:02:03:04:05:06:07", "01:02:03:04:05:06", "", "01-02-03-04-05-06-07",
                             "01:02:03:04:05:06:7", "x"}) {
        const std::string document = std::string("{\"n\":\"") + text + "\"}";
        EXPECT_EQ(nuv::test::message_of([&] { nuv::test::read_json(document, "n", nid); }),
                  "Deserialization of NID \"n\" failed, got sscanf read error")
            << text;
    }
    EXPECT_EQ(nuv::test::message_of([&] { nuv::test::read_json("{}", "n", nid); }),
              "Deserialization of NID \"n\" failed, got: \"\"");
    EXPECT_EQ(nid, before);
}
