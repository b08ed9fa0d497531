// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_entry.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "support/channels.hpp"

namespace nuv::test {
namespace {

TEST(ChannelEntry, UpdateChangesSomethingExactlyWhenItSaysSo) {
    RandomChannels random;
    expect_update_law<ChannelEntry>([&] { return random.entry(); });
}

TEST(ChannelEntry, CapabilitiesAreOnlyAdded) {
    ChannelEntry entry = channel(36, 5180000, 0b101);
    EXPECT_FALSE(entry.can_update_from(entry));
    EXPECT_FALSE(entry.can_update_from(channel(36, 5180000, 0b001)));
    EXPECT_TRUE(entry.can_update_from(channel(36, 5180000, 0b010)));
    entry.update(channel(40, 5200000, 0b010));
    EXPECT_EQ(entry, channel(40, 5200000, 0b111));
}

TEST(ChannelEntry, EquivalenceIgnoresTheTimesAndOrderAllButTheFrequency) {
    ChannelEntry a = channel(36, 5180000);
    ChannelEntry b = a;
    a.set_anpi({7, 1});
    b.set_anpi({7, 2});
    EXPECT_TRUE(a.equivalent_to(b));
    EXPECT_FALSE(a == b);
    b.set_channel_utilization({0, 1});
    EXPECT_FALSE(a.equivalent_to(b));
    EXPECT_FALSE(a.equivalent_to(channel(36, 5180000)));
    EXPECT_FALSE(channel(1, 1).equivalent_to(channel(2, 1)));
    EXPECT_FALSE(channel(1, 1, 1).equivalent_to(channel(1, 1, 3)));
    EXPECT_TRUE(channel(40, 5180000) < channel(36, 5200000));
    EXPECT_FALSE(channel(36, 5180000) < channel(40, 5180000));
}

TEST(ChannelEntry, FlagsAreStampedWhenTheyChangeOrWereNeverSet) {
    const TestClock clock(10);
    ChannelEntry entry;
    const auto stamp = [&] { return entry.get_config_flags().get_timestamp(); };
    entry.set_remote_disturber(false);
    EXPECT_EQ(stamp(), 10);
    TestClock::now = 11;
    entry.set_performance_opt(true);
    EXPECT_EQ(entry.get_config_flags().get(), ChannelConfigBits(0b10));
    EXPECT_TRUE(entry.get_performance_opt() && !entry.get_remote_disturber());
    TestClock::now = 12;
    entry.set_performance_opt(true);
    EXPECT_EQ(stamp(), 11);
    entry.set_remote_disturber(true);
    entry.set_performance_opt(false);
    EXPECT_EQ(entry.get_config_flags().get(), ChannelConfigBits(0b01));
    EXPECT_EQ(stamp(), 12);
}

TEST(ChannelEntry, A320MHzChannelReports80Plus80AsItsMaximum) {
    for (unsigned bits = 0; bits < 1024; ++bits) {
        const ChannelEntry entry = channel(1, 1, bits);
        std::vector<ChannelWidth> all;
        for (std::uint8_t width = 0; width < 6; ++width) {
            if ((bits >> width & 1U) != 0) {
                all.push_back(static_cast<ChannelWidth>(width));
            }
        }
        const auto least = all.empty() ? ChannelWidth::INVALID : all.front();
        auto greatest = all.empty() ? ChannelWidth::INVALID : all.back();
        if (greatest == ChannelWidth::HT320) {
            greatest = ChannelWidth::HT8080;
        }
        EXPECT_EQ(entry.get_min_supported_channel_width(), least) << bits;
        EXPECT_EQ(entry.get_max_supported_channel_width(), greatest) << bits;
        EXPECT_EQ(entry.get_all_supported_channel_width(), all) << bits;
    }
    EXPECT_EQ(channel(1, 5500000).get_frequency_band(), FrequencyBand::BAND_5_GHZ);
    EXPECT_EQ(channel(1, 5500000).get_detailed_frequency_band(),
              DetailedFrequencyBand::BAND_5_GHZ_UPPER);
}

TEST(ChannelEntry, TextListsTheFieldsHighestBitFirst) {
    std::ostringstream os;
    ChannelEntry entry = channel(36, 5180000, 0b111);
    entry.set_max_regulatory_power({20, 1});
    os << std::hex << entry << '\n';
    entry = {149, KiloHertz{5745000}, 0x241, {0b00010, 1}, {0b01, 1}, {22.5, 1}, {41, 1}, {255, 1}};
    os << entry;
    EXPECT_EQ(os.str(),
              " 36 | 5180000 kHz | 20 | 0000000111 | 00000 | 00 | -110 | 0\n"
              " 149 | 5745000 kHz | 22.5 | 1001000001 | 00010 | 01 | -89.5 | 255");
}

TEST(ChannelEntry, WritesFlagsAndPowerOrNull) {
    ChannelEntry entry = channel(36, 5180000);
    EXPECT_EQ(to_json(entry), R"({"channel":36,"frequency":5180000,"config_flags":null,)"
                              R"("max_regulatory_power":null})");
    const struct {
        float power;
        std::string text;
    } table[] = {{23.9F, "23"},
                 {-23.9F, "-23"},
                 {3e9F, "2147483647"},
                 {-std::numeric_limits<float>::infinity(), "-2147483648"},
                 {std::numeric_limits<float>::quiet_NaN(), "0"}};
    entry.set_config_flags({0b11, 1});
    for (const auto& [power, text] : table) {
        entry.set_max_regulatory_power({power, 1});
        EXPECT_EQ(to_json(entry),
                  R"({"channel":36,"frequency":5180000,)"
                  R"("config_flags":["REMOTE_DISTURBER","PERFORMANCE_OPTIMIZATION"],)"
                  R"("max_regulatory_power":)" +
                      text + "}");
    }
}

TEST(ChannelEntry, WritingFailsByName) {
    ChannelEntry entry = channel(36, 5180000);
    const std::string key = "Serialization of CharArray failed";
    const std::string object = "Serialization of JSONSerializable object failed: ";
    EXPECT_EQ(
        refusals(entry),
        (std::vector<std::string>{
            object + "Could not open object", key, "Serialization of std::uint8_t failed", key,
            "Serialization of std::int64_t failed", key,
            "Serialization of ChannelEntry failed: Failed to write null for config_flags", key,
            "Serialization of ChannelEntry failed: Failed to write null for max_regulatory_power",
            object + "Could not close object"}));
    entry.set_config_flags({0b01, 1});
    EXPECT_EQ(refusals(entry)[7],
              "Serialization of std::vector failed: Serialization of std::string failed");
}

TEST(ChannelEntry, ReadingKeepsChannelFrequencyAndThatFlagsAreSet) {
    const TestClock clock(10);
    const auto read = [](const std::string& members) {
        ChannelEntry entry{9, KiloHertz{9}, 9, {9, 9}, {1, 9}, {9, 9}, {9, 9}, {9, 9}};
        const std::string failure = from_json("{" + members + "}", "", entry);
        if (failure.empty()) {
            ChannelEntry expected = channel(entry.get_channel(), entry.get_frequency().count(), 0);
            expected.set_config_flags({0, entry.get_config_flags().get_timestamp()});
            EXPECT_EQ(entry, expected) << "something else survived";
            EXPECT_EQ(entry.get_config_flags().get_timestamp(),
                      entry.get_config_flags().is_set() ? 10 : NEVER);
        }
        return failure.empty() ? to_json(entry) : failure;
    };
    const std::pair<std::string, std::string> table[] = {
        {R"("channel":6)", R"({"channel":6,"frequency":2437000,"config_flags":null,)"},
        {R"("channel":14)", R"({"channel":14,"frequency":2477000,)"},
        {R"("channel":35)", R"({"channel":35,"frequency":2582000,)"},
        {R"("channel":36,"frequency":null)", R"({"channel":36,"frequency":5180000,)"},
        {R"("channel":1,"frequency":0)", R"({"channel":1,"frequency":2412000,)"},
        {R"("channel":1,"frequency":5955000)", R"({"channel":1,"frequency":5955000,)"},
        {R"("channel":36,"config_flags":["REMOTE_DISTURBER"],"max_regulatory_power":23)",
         R"({"channel":36,"frequency":5180000,"config_flags":[],"max_regulatory_power":null})"},
        {R"("channel":36,"config_flags":["whatever"])",
         R"({"channel":36,"frequency":5180000,"config_flags":[],)"},
        {R"("frequency":5180000)", R"(Deserialization of std::uint8_t "channel" failed)"},
        {R"("channel":1,"frequency":"")", R"(Deserialization of std::int64_t "frequency" failed)"},
        {R"("channel":1,"config_flags":{})",
         R"(Deserialization of std::vector "config_flags" failed)"},
        {R"("channel":1,"config_flags":[1])", R"(Deserialization of std::string "" failed)"},
        {R"("channel":1,"max_regulatory_power":2.5)",
         R"(Deserialization of std::int32_t "max_regulatory_power" failed)"},
    };
    for (const auto& [members, expected] : table) {
        EXPECT_EQ(read(members).substr(0, expected.size()), expected) << members;
    }
}

}  // namespace
}  // namespace nuv::test
