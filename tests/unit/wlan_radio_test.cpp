// SPDX-License-Identifier: Apache-2.0
#include "nuv/wlan_radio.hpp"

#include "tests/support/channels.hpp"

namespace nuv::test {

TEST(WLANRadio, UpdateAddsAbilitiesAndNeverReplacesTheIdentifier) {
    const auto wide = ChannelWidth::HT80;
    const MACAddress id({2, 0, 0, 0, 0, 1});
    const MACAddress other_id({2, 0, 0, 0, 0, 2});
    WLANRadio radio({id, 1}, {wide, 2}, {}, 0b0001, 0, ChannelList({channel(1, 2412000)}));
    const WLANRadio other({other_id, 2}, {wide, 4}, {wide, 1}, 0b0110, 0b1,
                          ChannelList({channel(6, 2437000)}, ChannelList::UpdateType::PARTIAL));
    EXPECT_TRUE(radio < other && !radio.shares_channel_with(other));
    radio.update(other);
    EXPECT_EQ(radio, WLANRadio({id, 1}, {wide, 4}, {wide, 1}, 0b0111, 0b1,
                               ChannelList({channel(1, 2412000), channel(6, 2437000)})));
    EXPECT_TRUE(radio.shares_channel_with(other));
}

TEST(WLANRadio, EveryFieldCountsForEquivalenceTheTimesDoNot) {
    const MACAddress id({2, 0, 0, 0, 0, 1});
    const WLANRadio radio({id, 1});
    EXPECT_TRUE(radio.equivalent_to(WLANRadio({id, 2})) && !(radio == WLANRadio({id, 2})));
    const NSSTable nss(ChannelWidth::HT20, 1);
    const ChannelList channels({channel(1, 2412000)});
    for (const WLANRadio& other :
         {WLANRadio({MACAddress(), 1}), WLANRadio({id, NEVER}),
          WLANRadio({id, 1}, nss, {}, 0, 0, {}), WLANRadio({id, 1}, {}, nss, 0, 0, {}),
          WLANRadio({id, 1}, {}, {}, 1, 0, {}), WLANRadio({id, 1}, {}, {}, 0, 1, {}),
          WLANRadio({id, 1}, {}, {}, 0, 0, channels)}) {
        EXPECT_FALSE(radio.equivalent_to(other));
    }
}

TEST(WLANRadio, TextNamesWhatItIsAbleToDoAboveItsChannels) {
    const ChannelList channels({channel(1, 2412000), channel(6, 2437000)});
    const WLANRadio radio({MACAddress({2, 0, 0, 0, 0, 1}), 1}, {ChannelWidth::HT20, 2}, {},
                          0b0101000, 0b10000001, channels);
    std::ostringstream os;
    os << std::hex << std::setw(999) << radio << WLANRadio({});
    EXPECT_EQ(os.width(), 999);
    EXPECT_EQ(os.str(),
              "radio id: 02:00:00:00:00:01, rx streams: [20 MHz: 2], tx streams: [], "
              "PHY modes: [n, ax], MLO modes: [RESERVED_0, STR]\n" +
                  channels.to_string() +
                  "radio id: ---, rx streams: [], tx streams: [], PHY modes: [], MLO modes: []\n");
}

}  // namespace nuv::test
