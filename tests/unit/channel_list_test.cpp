// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_list.hpp"

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/channels.hpp"
#include "tests/support/json_text.hpp"

namespace nuv::test {

using enum ChannelList::UpdateType;

/// Channels of these numbers in the 5 GHz band; a negative one has more capabilities.
ChannelList list(const std::vector<int>& numbers, ChannelList::UpdateType type = COMPLETE) {
    std::vector<ChannelEntry> entries;
    for (const int number : numbers) {
        const int channel_number = std::abs(number);
        entries.push_back(channel(static_cast<std::uint8_t>(channel_number),
                                  5000000 + 5000 * channel_number, number < 0 ? 3U : 1U));
    }
    return ChannelList(entries, type);
}

TEST(ChannelList, CompleteReportsDropWhatTheyLackAndPartialOnesDoNot) {
    const std::vector<int> ours{36, 44, 52};
    // A report, and what a partial one leaves; a complete one leaves itself.
    const std::pair<std::vector<int>, std::vector<int>> table[] = {
        {ours, ours},
        {{36, 52}, ours},
        {{}, ours},
        {{-44}, {36, -44, 52}},
        {{36, -44, 52}, {36, -44, 52}},
        {{40, 48, 56}, {36, 40, 44, 48, 52, 56}},
    };
    for (const auto& [report, partial] : table) {
        for (const int type : {0, 1, 255}) {
            ChannelList updated = list(ours, PARTIAL);
            const auto other = list(report, static_cast<ChannelList::UpdateType>(type));
            const ChannelList expected = list(type == 0 ? report : partial);
            EXPECT_EQ(updated.can_update_from(other), !(expected == updated));
            updated.update(other);
            EXPECT_EQ(updated, expected);
            EXPECT_EQ(updated.get_update_type(), PARTIAL);
        }
    }
}

TEST(ChannelList, IsSortedAndOfSeveralEntriesKeepsTheLast) {
    const ChannelList unsorted = list({52, 36, 44, -36, 52, -44});
    EXPECT_EQ(unsorted, list({-36, -44, 52}));
    EXPECT_EQ(unsorted.get_channel_entry(KiloHertz{5220000}), &unsorted.get_channels()[1]);
    EXPECT_EQ(unsorted.get_channel_entry(KiloHertz{5200000}), nullptr);
}

TEST(ChannelList, UpdateTypeCountsForEquivalenceAlone) {
    EXPECT_EQ(list({36}, COMPLETE), list({36}, PARTIAL));
    EXPECT_FALSE(list({36}, COMPLETE).equivalent_to(list({36}, PARTIAL)));
    EXPECT_TRUE(list({36}, PARTIAL).equivalent_to(list({36}, PARTIAL)));
    EXPECT_TRUE(list({36}) < list({36, 40}) && list({36, 40}) < list({40}));
    EXPECT_FALSE(list({36}) < list({-36}));
    EXPECT_TRUE(list({36, 44}).has_common_channel_with(list({40, -44})));
    EXPECT_FALSE(list({36, 44}).has_common_channel_with(list({40, 48})));
}

TEST(ChannelList, FlagsAreSetAndResetThroughout) {
    platform::FakePlatform fake;
    ChannelList channels = list({36, 40, 44});
    channels.set_performance_opt_flag(36, 40, true);
    channels.get_channel_entry(KiloHertz{5200000})->set_remote_disturber(true);
    channels.get_channel_entry(KiloHertz{5200000})->set_state_flags({1, 10});
    ChannelList others = list({100, 104, 108});
    others.set_performance_opt_flag(0, 104, true);
    others.get_channel_entry(KiloHertz{5520000})->set_remote_disturber(true);
    EXPECT_FALSE(channels.channel_configuration_equivalent_to(list({36})));
    EXPECT_TRUE(channels.channel_configuration_equivalent_to(others));
    fake.clock().advance(std::chrono::seconds(1));
    channels.set_unset_configuration_flags_to_not_penalized();
    const std::int64_t later = fake.clock().now().count();
    channels.set_unset_state_flags_to_default_state();
    EXPECT_FALSE(channels.channel_configuration_equivalent_to(others));
    const auto& entries = channels.get_channels();
    EXPECT_EQ(entries[0].get_config_flags(), ChannelEntry::ConfigFlags(0b10, 1));
    EXPECT_EQ(entries[1].get_config_flags(), ChannelEntry::ConfigFlags(0b11, 3));
    EXPECT_EQ(entries[1].get_state_flags(), ChannelEntry::StateFlags(1, 10));
    EXPECT_EQ(entries[2].get_config_flags(), ChannelEntry::ConfigFlags(0, later));
    EXPECT_EQ(entries[0].get_state_flags(), ChannelEntry::StateFlags(0, later + 1));

    ChannelList both = channels;
    channels.reset_configuration_flags();
    EXPECT_TRUE(entries[0].get_state_flags().is_set() && !entries[0].get_config_flags().is_set());
    channels.reset_state_flags();
    both.reset_state_and_config_flags();
    EXPECT_EQ(channels, list({36, 40, 44}));
    EXPECT_EQ(both, channels);
}

TEST(ChannelList, BandIsThatOfTheFirstEntryAndSeveralAreLogged) {
    platform::FakePlatform platform;
    EXPECT_EQ(ChannelList().get_frequency_band(), FrequencyBand::INVALID_BAND_MAX);
    EXPECT_EQ(ChannelList().get_detailed_frequency_band(), DetailedFrequencyBand::INVALID_BAND);
    EXPECT_EQ(list({36, 100}).get_frequency_band(), FrequencyBand::BAND_5_GHZ);
    EXPECT_EQ(platform.log().texts(), std::vector<std::string>());
    EXPECT_EQ(list({36, 100}).get_detailed_frequency_band(),
              DetailedFrequencyBand::BAND_5_GHZ_LOWER);
    const ChannelList bands({channel(36, 5180000), channel(1, 2412000)});
    EXPECT_EQ(bands.get_frequency_band(), FrequencyBand::BAND_2_4_GHZ);
    EXPECT_EQ(platform.log().texts(),
              (std::vector<std::string>{
                  "ChannelList covers multiple frequency bands: 5180000 kHz 5500000 kHz",
                  "ChannelList covers multiple frequency bands: 2412000 kHz 5180000 kHz"}));
}

TEST(ChannelList, KeepsItsUpdateTypeAloneWhenItIsRead) {
    ChannelList read = list({100}, PARTIAL);
    EXPECT_EQ(from_json("{}", "", read), "");
    EXPECT_EQ(read, ChannelList());
    EXPECT_EQ(read.get_update_type(), PARTIAL);
}

}  // namespace nuv::test
