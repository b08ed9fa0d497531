// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_types.hpp"

#include <gtest/gtest.h>

#include "support/enum_texts.hpp"

namespace {

using nuv::test::expect_texts;
using nuv::test::Number;

TEST(ChannelTypes, TextsOfAllValues) {
    expect_texts<nuv::ChannelWidth>({"20 MHz|40 MHz|80 MHz|160 MHz|80+80 MHz|320 MHz|INVALID",
                                     "INVALID CHANNEL WIDTH ", Number::APPENDED});
    expect_texts<nuv::ChannelStateBit>(
        {"DFS_CLEAR|RADAR_FOUND|CAC_RUNNING|PRECAC_TODO|INTERFERENCE_FOUND|INVALID_MAX",
         "INVALID CHANNEL STATE"});
    expect_texts<nuv::ChannelCapabilityBit>(
        {"HT20|HT40|HT80|HT160|HT8080|HT320|DFS|DFS_WEATHER|PRIMARY_LOWER_BEHAVIOR|"
         "PRIMARY_UPPER_BEHAVIOR|INVALID_MAX",
         "INVALID CHANNEL CAPABILITY"});
    expect_texts<nuv::ChannelConfigBit>(
        {"REMOTE_DISTURBER|PERFORMANCE_OPTIMIZATION|INVALID_MAX", "INVALID CHANNEL PROPERTY"});
    expect_texts<nuv::FrequencyBand>({"2.4 GHz|5 GHz|6 GHz|INVALID BAND MAX", "INVALID BAND"});
}

TEST(ChannelTypes, WidthsAreOrderedByNumberNotByBandwidth) {
    EXPECT_LT(nuv::ChannelWidth::HT160, nuv::ChannelWidth::HT8080);
    EXPECT_LT(nuv::ChannelWidth::HT8080, nuv::ChannelWidth::HT320);
}

}  // namespace
