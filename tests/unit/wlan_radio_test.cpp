// SPDX-License-Identifier: Apache-2.0
#include "nuv/wlan_radio.hpp"

#include <gtest/gtest.h>

#include "support/channels.hpp"

namespace nuv::test {
namespace {

const MACAddress ID({2, 0, 0, 0, 0, 1});
const MACAddress OTHER_ID({2, 0, 0, 0, 0, 2});

TEST(WLANRadio, UpdateChangesSomethingExactlyWhenItSaysSo) {
    RandomChannels random;
    expect_update_law<WLANRadio>([&] { return random.radio(); });
}

TEST(WLANRadio, UpdateAddsAbilitiesAndNeverReplacesTheIdentifier) {
    const auto wide = ChannelWidth::HT80;
    WLANRadio radio({ID, 1}, {wide, 2}, {}, 0b0001, 0, ChannelList({channel(1, 2412000)}));
    radio.update({{OTHER_ID, 2},
                  {wide, 4},
                  {wide, 1},
                  0b0110,
                  0b1,
                  ChannelList({channel(6, 2437000)}, ChannelList::UpdateType::PARTIAL)});
    EXPECT_EQ(radio, WLANRadio({ID, 1}, {wide, 4}, {wide, 1}, 0b0111, 0b1,
                               ChannelList({channel(1, 2412000), channel(6, 2437000)})));
    WLANRadio unset({});
    unset.update(WLANRadio({ID, 1}));
    EXPECT_EQ(unset.get_radio_id().get(), ID);
}

TEST(WLANRadio, EveryFieldCountsForEquivalenceAndTheIdentifierAloneForOrder) {
    const WLANRadio radio({ID, 1});
    EXPECT_TRUE(radio.equivalent_to(WLANRadio({ID, 2})));
    EXPECT_FALSE(radio == WLANRadio({ID, 2}));
    std::vector<WLANRadio> others(6, radio);
    others[0].set_rx_nss_table({ChannelWidth::HT20, 1});
    others[1].set_tx_nss_table({ChannelWidth::HT20, 1});
    others[2].set_supported_phymodes(1);
    others[3].set_mlo_modes(1);
    others[4].set_channel_list(ChannelList({channel(1, 2412000)}));
    others[5] = WLANRadio({OTHER_ID, 1});
    for (const WLANRadio& other : others) {
        EXPECT_FALSE(radio.equivalent_to(other));
        EXPECT_EQ(radio < other, &other == &others[5]);
        EXPECT_EQ(other.shares_channel_with(others[4]), &other == &others[4]);
    }
}

}  // namespace
}  // namespace nuv::test
