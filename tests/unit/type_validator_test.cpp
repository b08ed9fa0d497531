// SPDX-License-Identifier: Apache-2.0
#include "nuv/type_validator.hpp"

#include "nuv/nss_table.hpp"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/channels.hpp"
#include "tests/support/vectors.hpp"

namespace nuv {
namespace {

using Channels = OperatingClassDeduction::ChannelSet;

template <typename T>
concept HasIsValid = requires(T value) {
    is_valid(value);
};
static_assert(HasIsValid<std::bitset<32>> && !HasIsValid<int> && !HasIsValid<std::bitset<16>>);

TEST(TypeValidator, NumbersWithGaps) {
    for (int i = 0; i < 256; ++i) {
        const auto value = static_cast<std::uint8_t>(i);
        EXPECT_EQ(is_valid(static_cast<PHYType>(i)),
                  i == 2 || (i >= 4 && i <= 15) || i == 17 || i == 18);
        EXPECT_EQ(is_valid_rcpi(value), i <= 220 || i == 255) << i;
        EXPECT_EQ(is_valid_anpi(value), i <= 220 || i == 255) << i;
        EXPECT_EQ(is_valid_channel_utilization(value), i <= 100) << i;
        EXPECT_EQ(is_valid_link_id(value), i <= 14) << i;
        const NSSTable table(ChannelWidth::HT80, value);
        EXPECT_EQ(is_valid(table), i >= 1 && i <= 8) << i;
        EXPECT_EQ(is_valid_global_operating_class(value),
                  (i >= 81 && i <= 84) || (i >= 115 && i <= 137 && i != 124) || i == 180)
            << i;
    }
}

TEST(TypeValidator, SetsAddressesAndRates) {
    const auto rates = [](std::uint32_t a, std::uint32_t b) {
        return DataRatePair(DataRate{a}, DataRate{b});
    };
    EXPECT_FALSE(is_valid(std::bitset<32>()));
    EXPECT_TRUE(is_valid(std::bitset<32>(0x80000000)));
    EXPECT_FALSE(is_valid(MACAddress()));
    EXPECT_TRUE(is_valid(MACAddress("02:00:00:00:00:01")));
    EXPECT_TRUE(is_valid(rates(1, 1)));
    EXPECT_FALSE(is_valid(rates(0, 1)));
    EXPECT_FALSE(is_valid(rates(1, 0)));
    EXPECT_TRUE(is_valid(std::pair(rates(2, 3), rates(2, 3))));
    EXPECT_FALSE(is_valid(std::pair(rates(2, 3), rates(3, 3))));
    EXPECT_FALSE(is_valid(std::pair(rates(2, 3), rates(2, 4))));
}

TEST(TypeValidator, ChannelSetsOfGlobalClasses) {
    const std::tuple<std::uint8_t, Channels, bool, bool, bool> table[] = {
        {115, {36, 48}, true, true, true},
        {115, {36, 52}, false, false, false},
        {116, {36, 44}, true, false, true},
        {116, {38, 46}, false, true, false},
        {128, {36, 177}, true, false, false},
        {128, {42, 171}, false, true, true},
        {124, {}, false, false, false},
        {125, {}, true, true, true},
        {129, {132}, false, false, false},
        {128, Channels(std::vector<std::uint8_t>{177, 36, 36}), true, false, false}};
    for (const auto& [opclass, channels, all, center, definition] : table) {
        EXPECT_EQ(is_valid_global_operating_class_channelset(opclass, channels), all);
        EXPECT_EQ(is_valid_global_operating_class_center_channelset(opclass, channels), center);
        EXPECT_EQ(is_valid_global_operating_class_definition_channelset(opclass, channels),
                  definition);
    }
}

ChannelEntry read_entry(std::istream& is) {
    int channel = 0;
    int frequency = 0;
    ChannelCapabilityBits capabilities;
    ChannelStateBits state;
    is >> channel >> frequency >> capabilities >> state;
    const auto measurement = [&is]() -> ChannelEntry::Measurement {
        std::string word;
        is >> word;
        // What was never set is not looked at, whatever its value.
        return word == "-"
                   ? ChannelEntry::Measurement(221, test::NEVER)
                   : ChannelEntry::Measurement(static_cast<std::uint8_t>(std::stoi(word)), 1);
    };
    ChannelEntry entry = test::channel(static_cast<std::uint8_t>(channel), frequency, capabilities);
    entry.set_state_flags({state, 1});
    entry.set_anpi(measurement());
    entry.set_channel_utilization(measurement());
    return entry;
}

/// "valid", or what is logged, or "silent".
std::string outcome(const auto& value) {
    platform::FakePlatform platform;
    const bool valid = is_valid(value);
    const auto& records = platform.log().records();
    EXPECT_LE(records.size(), valid ? 0U : 1U);
    for (const auto& record : records) {
        EXPECT_EQ(record.module, "type_validator");
        EXPECT_EQ(record.file, "src/shared/type_validator");
        EXPECT_EQ(record.function, "is_valid");
    }
    return valid ? "valid" : records.empty() ? "silent" : records[0].text;
}

TEST(TypeValidator, NamesTheFirstThingWrongAndNoMore) {
    for (const auto& [call, expected] : test::listed_cases("type_validator.tsv")) {
        std::istringstream is(call);
        std::string kind;
        is >> kind;
        if (kind == "entry") {
            EXPECT_EQ(outcome(read_entry(is)), expected) << call;
        } else {
            const ChannelInfo info = test::read_channel_info(is);
            EXPECT_EQ(test::without_info(outcome(info), info), expected) << call;
        }
    }
}

TEST(TypeValidator, ListsLogTheirFirstBadEntry) {
    EXPECT_EQ(outcome(ChannelList({test::channel(36, 5180000), test::channel(40, 5200000)})),
              "valid");
    EXPECT_EQ(outcome(ChannelList({test::channel(44, 5221000), test::channel(36, 5180000),
                                   test::channel(40, 5200000, 0)})),
              "HW Flags invalid: All zero");
}

}  // namespace
}  // namespace nuv
