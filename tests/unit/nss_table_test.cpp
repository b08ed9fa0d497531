// SPDX-License-Identifier: Apache-2.0
#include "nuv/nss_table.hpp"

#include <gtest/gtest.h>

#include "support/channels.hpp"
#include "support/json_text.hpp"

namespace nuv::test {
namespace {

using enum ChannelWidth;

std::string text(const NSSTable& table) {
    std::ostringstream os;
    os << table;
    return os.str();
}

TEST(NSSTable, MergeAndIntersectAreTheGreaterAndTheSmaller) {
    RandomChannels random;
    for (int i = 0; i < 2000; ++i) {
        const NSSTable a = random.nss();
        const NSSTable b = random.nss();
        EXPECT_EQ(a.merge(b), b.merge(a));
        EXPECT_EQ(a.intersect(b), b.intersect(a));
        EXPECT_EQ(a.merge(a.intersect(b)), a);
        EXPECT_EQ(a.intersect(b) == b, a.merge(b) == a);
    }
    const NSSTable wide(HT160, 2);
    EXPECT_EQ(text(wide.merge({HT20, 4})), "20 MHz: 4, 160 MHz: 2");
    EXPECT_EQ(text(wide.intersect({HT160, 4})), "160 MHz: 2");
}

TEST(NSSTable, WidthsPropagateToThoseThatTheyInclude) {
    const struct {
        ChannelWidth width;
        bool propagate, only_if_greater;
        std::string expected;
    } table[] = {
        {HT80, false, false, "20 MHz: 4, 40 MHz: 1, 80 MHz: 2"},
        {HT80, true, false, "20 MHz: 2, 40 MHz: 2, 80 MHz: 2"},
        {HT80, true, true, "20 MHz: 4, 40 MHz: 2, 80 MHz: 2"},
        {HT20, false, true, "20 MHz: 4, 40 MHz: 1"},
        {HT8080, true, true, "20 MHz: 4, 40 MHz: 2, 80 MHz: 2, 80+80 MHz: 2"},
        {HT320, true, true, "20 MHz: 4, 40 MHz: 2, 80 MHz: 2, 160 MHz: 2, 320 MHz: 2"},
        {INVALID, true, false, "20 MHz: 4, 40 MHz: 1"},
    };
    for (const auto& [width, propagate, only_if_greater, expected] : table) {
        NSSTable nss(HT20, 4);
        nss.update_num_streams(HT40, 1, false, false);
        nss.update_num_streams(width, 2, propagate, only_if_greater);
        EXPECT_EQ(text(nss), expected);
    }
}

TEST(NSSTable, GreatestWidthGoesByNumber) {
    NSSTable nss;
    EXPECT_EQ(nss.get_max_channel_width(), INVALID);
    EXPECT_EQ(nss.get_max_streams(), 0);
    nss.update_num_streams(HT160, 8, false, false);
    nss.update_num_streams(HT8080, 1, false, false);
    EXPECT_EQ(nss.get_max_channel_width(), HT8080);
    EXPECT_EQ(nss.get_max_streams(), 8);
    EXPECT_EQ(nss.get_num_streams(INVALID), 0);
}

TEST(NSSTable, JsonIsRefusedWithoutATrace) {
    NSSTable nss(HT160, 7);
    EXPECT_EQ(from_json(R"({"n":[]})", "n", nss), R"(Deserialization of NSSTable "n" failed)");
    EXPECT_EQ(nss, NSSTable(HT160, 7));
}

}  // namespace
}  // namespace nuv::test
