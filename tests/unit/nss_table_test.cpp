// SPDX-License-Identifier: Apache-2.0
#include "nuv/nss_table.hpp"

#include "tests/support/test.hpp"

namespace nuv::test {

using enum ChannelWidth;

TEST(NSSTable, WidthsPropagateToThoseThatTheyInclude) {
    const std::tuple<ChannelWidth, bool, bool, ChannelWidth, std::string> table[] = {
        {HT80, false, false, HT80, "20 MHz: 4, 40 MHz: 1, 80 MHz: 2"},
        {HT80, true, false, HT80, "20 MHz: 2, 40 MHz: 2, 80 MHz: 2"},
        {HT80, true, true, HT80, "20 MHz: 4, 40 MHz: 2, 80 MHz: 2"},
        {HT20, false, true, HT40, "20 MHz: 4, 40 MHz: 1"},
        {HT8080, true, true, HT8080, "20 MHz: 4, 40 MHz: 2, 80 MHz: 2, 80+80 MHz: 2"},
        {HT320, true, true, HT320, "20 MHz: 4, 40 MHz: 2, 80 MHz: 2, 160 MHz: 2, 320 MHz: 2"},
        {INVALID, true, false, HT40, "20 MHz: 4, 40 MHz: 1"},
    };
    for (const auto& [width, propagate, only_if_greater, greatest, expected] : table) {
        NSSTable nss(HT20, 4);
        nss.update_num_streams(HT40, 1, false, false);
        nss.update_num_streams(width, 2, propagate, only_if_greater);
        EXPECT_EQ(nss.to_string(), expected);
        EXPECT_EQ(nss.get_max_channel_width(), greatest);
    }
    EXPECT_EQ(NSSTable(HT160, 2).merge({HT160, 4}), NSSTable(HT160, 4));
    EXPECT_EQ(NSSTable().get_max_channel_width(), INVALID);
    EXPECT_EQ(NSSTable(HT160, 8).merge({HT320, 1}).get_max_streams(), 8);
}

}  // namespace nuv::test
