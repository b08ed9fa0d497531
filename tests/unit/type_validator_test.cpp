// SPDX-License-Identifier: Apache-2.0
#include "nuv/type_validator.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/nss_table.hpp"
#include "nuv_platform/fake.hpp"

namespace nuv {
namespace {

using Texts = std::vector<std::string>;
using Channels = std::vector<std::uint8_t>;

template <typename T>
concept HasIsValid = requires(T value) {
    is_valid(value);
};
static_assert(HasIsValid<std::bitset<32>> && !HasIsValid<int> && !HasIsValid<std::bitset<16>>);

template <class E>
void expect_valid_up_to(int last) {
    for (int number = 0; number < 256; ++number) {
        EXPECT_EQ(is_valid(static_cast<E>(number)), number <= last) << number;
    }
}

TEST(TypeValidator, EnumerationsAreValidUpToTheirLastNumber) {
    expect_valid_up_to<WLANCapability>(31);
    expect_valid_up_to<WLANPhymode>(6);
    expect_valid_up_to<WLANIfaceState>(13);
    expect_valid_up_to<WLANSecurity>(11);
    expect_valid_up_to<ChannelWidth>(5);
    expect_valid_up_to<FrequencyBand>(2);
    expect_valid_up_to<WNMAction>(28);
    expect_valid_up_to<RequestModeBit>(7);
    expect_valid_up_to<BTMStatusCode>(8);
    expect_valid_up_to<MeasurementRequestModeBit>(7);
    expect_valid_up_to<BeaconReportFrameType>(1);
}

TEST(TypeValidator, OperatingModeFourIsValidAlthoughUnassigned) {
    expect_valid_up_to<WLANOpmode>(17);
}

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
    const struct {
        std::uint8_t opclass;
        Channels channels;
        bool all, center, definition;
    } table[] = {{115, {36, 48}, true, true, true},    {115, {36, 52}, false, false, false},
                 {116, {36, 44}, true, false, true},   {116, {38, 46}, false, true, false},
                 {128, {36, 177}, true, false, false}, {128, {42, 171}, false, true, true},
                 {124, {}, false, false, false},       {125, {}, true, true, true},
                 {129, {132}, false, false, false}};
    for (const auto& [opclass, channels, all, center, definition] : table) {
        EXPECT_EQ(is_valid_global_operating_class_channelset(opclass, channels), all);
        EXPECT_EQ(is_valid_global_operating_class_center_channelset(opclass, channels), center);
        EXPECT_EQ(is_valid_global_operating_class_definition_channelset(opclass, channels),
                  definition);
    }
}

ChannelEntry entry(std::uint8_t channel, int frequency, unsigned capabilities = 1,
                   unsigned state = 0, ChannelEntry::Measurement anpi = {},
                   ChannelEntry::Measurement utilization = {}) {
    return {channel, KiloHertz{frequency}, capabilities, {state, 1}, {}, {}, anpi, utilization};
}

/// What is logged while `value` is found to be valid, or not.
template <class T>
Texts log_of(const T& value, bool valid) {
    platform::FakePlatform platform;
    EXPECT_EQ(is_valid(value), valid);
    for (const auto& record : platform.log().records()) {
        EXPECT_EQ(record.module, "type_validator");
        EXPECT_EQ(record.file, "src/shared/type_validator");
        EXPECT_EQ(record.function, "is_valid");
    }
    return platform.log().texts();
}

TEST(TypeValidator, EntriesNameTheFirstThingWrongAndNoMore) {
    // From each row to the next one thing is mended.
    const std::pair<ChannelEntry, Texts> wrong[] = {
        {entry(0, 1, 0, 31, {221, 1}, {101, 1}), {}},
        {entry(7, 2437999, 0, 31, {221, 1}, {101, 1}),
         {"Frequency value and channel index does not seem to match: 2437 MHz and  7"}},
        {entry(1, 5005000, 0, 31, {221, 1}, {101, 1}), {"HW Flags invalid: All zero"}},
        {entry(1, 5005000, 1, 3, {221, 1}, {101, 1}), {"ChannelStateBits contradictory (00011)"}},
        {entry(1, 5005000, 1, 12, {221, 1}, {101, 1}), {"ChannelStateBits contradictory (01100)"}},
        {entry(1, 5005000, 1, 5, {221, 1}, {101, 1}),
         {"Invalid channel utilization channel entry"}},
        {entry(1, 5005000, 1, 10, {221, 1}, {100, 1}), {"Invalid ANPI in channel entry"}},
        {entry(1, 5005000, 1, 17, {255, 1}, {}),
         {"Channel Entry does not belong to any operating class"}},
    };
    for (const auto& [value, texts] : wrong) {
        EXPECT_EQ(log_of(value, false), texts);
    }
    // What was never set is not looked at.
    const ChannelEntry::Measurement never(221, ChannelEntry::Measurement::NEVER_SET);
    EXPECT_EQ(log_of(entry(36, 5180000, 1, 9, never, never), true), Texts());
}

TEST(TypeValidator, EntriesHaveTheFrequencyOfTheirChannelInOneBand) {
    const std::tuple<int, int, bool> table[] = {
        {14, 2484000, true},  {14, 2477000, false},  {13, 2472000, true},
        {36, 5180000, true},  {1, 5955000, true},    {233, 7115000, true},
        {36, 5180001, false}, {200, 6000000, false}, {119, 3002000, false}};
    for (const auto& [channel, frequency, valid] : table) {
        const auto value = entry(static_cast<std::uint8_t>(channel), frequency);
        EXPECT_EQ(log_of(value, valid).empty(), valid) << channel;
    }
}

TEST(TypeValidator, Channel2Of6GHzIsRefusedAlthoughItHasAClass) {
    EXPECT_EQ(log_of(entry(2, 5935000), false),
              Texts{"Frequency value and channel index does not seem to match: 5935 MHz and  2"});
}

TEST(TypeValidator, ListsLogTheirFirstBadEntry) {
    EXPECT_EQ(log_of(ChannelList({entry(36, 5180000), entry(40, 5200000)}), true), Texts());
    EXPECT_EQ(
        log_of(ChannelList({entry(44, 5221000), entry(36, 5180000), entry(40, 5200000, 0)}), false),
        Texts{"HW Flags invalid: All zero"});
}

TEST(TypeValidator, InfosNameTheFirstThingWrongAndNoMore) {
    using enum ChannelWidth;
    const auto info = [](int primary, int center, ChannelWidth width, unsigned map = 0,
                         int secondary = 0) {
        return ChannelInfo({KiloHertz{primary}, 1}, {{KiloHertz{center}, width, map}, 1},
                           KiloHertz{secondary}, {});
    };
    const struct {
        ChannelInfo info;
        const char *before, *behind;  // the text of the info
    } table[] = {
        {{}, "Error getting operating class of ChannelInfo ", ""},
        {info(5185000, 0, HT80, 0xFFFF), "Error getting operating class of ChannelInfo ", ""},
        {info(5180000, 0, HT80, 0x0011), "ChannelInfo ",
         " puncturing map has punctured sub-channels exceeding current channel width."},
        {info(5200000, 5210000, HT80, 0x0002), "ChannelInfo ", " has a punctured primary channel."},
        {info(6265000 + 150000, 6265000, HT320, 0x8000), "ChannelInfo ",
         " has a punctured primary channel."},
        {info(5180000, 5290000, HT80), "Channel Info ", " has invalid primary segment center"},
        {info(5180000, 0, HT8080, 0, 1), "Error getting operating class of ChannelInfo ", ""},
        {info(5180000, 0, HT8080, 0, 5745000), "Channel Info ",
         " has invalid primary segment center"},
        {info(5180000, 5210000, HT8080, 0, 5745000), "Channel Info ",
         " has invalid secondary segment center"},
        {info(5210000, 5210000, HT80), nullptr,
         "5210000 kHz is no valid primary frequency in opclass 128"},
    };
    for (const auto& row : table) {
        std::ostringstream text;
        if (row.before != nullptr) {
            text << row.before << row.info;
        }
        text << row.behind;
        EXPECT_EQ(log_of(row.info, false), Texts{text.str()});
    }
    const ChannelInfo sound[] = {
        info(5180000, 5210000, HT80, 0x000E),
        info(5180000, 5210000, HT8080, 0, 5775000),
        info(6115000, 6105000, HT320),
        info(6115000, 6265000, HT320),
        info(5200000, 5190000, HT40),
        info(5935000, 5935000, HT20),
        ChannelInfo({KiloHertz{2412000}, 1}, {}, {}, {}),
    };
    for (const ChannelInfo& value : sound) {
        EXPECT_EQ(log_of(value, true), Texts());
    }
}

}  // namespace
}  // namespace nuv
