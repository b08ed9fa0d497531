// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_entry.hpp"

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/channels.hpp"
#include "tests/support/json_text.hpp"

namespace nuv::test {

TEST(ChannelEntry, OrderIgnoresAllButTheFrequency) {
    EXPECT_TRUE(channel(40, 5180000) < channel(36, 5200000));
    EXPECT_FALSE(channel(36, 5180000) < channel(40, 5180000));
}

TEST(ChannelEntry, FlagsAreStampedWhenTheyChangeOrWereNeverSet) {
    platform::FakePlatform fake;
    ChannelEntry entry;
    entry.set_remote_disturber(false);
    EXPECT_EQ(entry.get_config_flags(), ChannelEntry::ConfigFlags(0, 1));
    entry.set_performance_opt(true);
    fake.clock().advance(std::chrono::nanoseconds(8));
    entry.set_performance_opt(true);
    EXPECT_EQ(entry.get_config_flags(), ChannelEntry::ConfigFlags(0b10, 2));
    EXPECT_TRUE(entry.get_performance_opt() && !entry.get_remote_disturber());
    entry.set_remote_disturber(true);
    entry.set_performance_opt(false);
    EXPECT_EQ(entry.get_config_flags(), ChannelEntry::ConfigFlags(0b01, 12));
}

TEST(ChannelEntry, A320MHzChannelReports80Plus80AsItsMaximum) {
    using enum ChannelWidth;
    const std::tuple<unsigned, ChannelWidth, ChannelWidth> table[] = {
        {0b1111000000, INVALID, INVALID}, {0b101111, HT20, HT8080},  {0b001110, HT40, HT160},
        {0b010000, HT8080, HT8080},       {0b100000, HT320, HT8080},
    };
    for (const auto& [bits, least, greatest] : table) {
        EXPECT_EQ(channel(1, 1, bits).get_min_supported_channel_width(), least) << bits;
        EXPECT_EQ(channel(1, 1, bits).get_max_supported_channel_width(), greatest) << bits;
    }
    EXPECT_EQ(channel(1, 1, 0b101010).get_all_supported_channel_width(),
              (std::vector{HT40, HT160, HT320}));
}

TEST(ChannelEntry, TextListsTheFieldsHighestBitFirst) {
    std::ostringstream os;
    os << std::hex << std::setw(99)
       << ChannelEntry(149, KiloHertz{5745000}, 0x241, {2, 1}, {1, 1}, {22.5, 1}, {41, 1},
                       {255, 1});
    EXPECT_EQ(os.width(), 99);
    EXPECT_EQ(os.str(), " 149 | 5745000 kHz | 22.5 | 1001000001 | 00010 | 01 | -89.5 | 255");
}

TEST(ChannelEntry, WritesFlagsByNameAndPowerTowardsZero) {
    const std::pair<float, std::string> table[] = {
        {23.9F, "23"},        {-23.9F, "-23"},
        {3e9F, "2147483647"}, {-std::numeric_limits<float>::infinity(), "-2147483648"},
        {std::nanf(""), "0"},
    };
    for (const auto& [power, text] : table) {
        EXPECT_EQ(to_json(ChannelEntry(36, KiloHertz{1}, 0, {}, {3, 1}, {power, 1}, {}, {})),
                  R"({"channel":36,"frequency":1,"config_flags":["REMOTE_DISTURBER",)"
                  R"("PERFORMANCE_OPTIMIZATION"],"max_regulatory_power":)" +
                      text + "}");
    }
}

TEST(ChannelEntry, ReadingKeepsChannelFrequencyAndThatFlagsAreSet) {
    platform::FakePlatform fake;
    ChannelEntry entry{9, KiloHertz{9}, 9, {9, 9}, {1, 9}, {9, 9}, {9, 9}, {9, 9}};
    from_json(R"({"channel":36,"config_flags":["REMOTE_DISTURBER"],"max_regulatory_power":23})", "",
              entry);
    EXPECT_EQ(entry, ChannelEntry(36, KiloHertz{5180000}, 0, {}, {0, 1}, {}, {}, {}));
}

}  // namespace nuv::test
