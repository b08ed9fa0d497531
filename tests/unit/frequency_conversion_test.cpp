// SPDX-License-Identifier: Apache-2.0
#include "nuv/frequency_conversion.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

using nuv::ChannelWidth;
using nuv::FrequencyBand;
using nuv::KiloHertz;
using nuv::MegaHertz;
using nuv::WLANPhymode;

constexpr std::int32_t LOWEST = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t HIGHEST = std::numeric_limits<std::int32_t>::max();

ChannelWidth width(int number) { return static_cast<ChannelWidth>(number); }

TEST(FrequencyConversion, ChannelNumbersAroundEveryBorder) {
    const struct {
        std::int32_t khz;
        int channel;
    } table[] = {{0, 0},         {1, 31},        {-1, 31},      {LOWEST, 102}, {2407000, 0},
                 {2411999, 0},   {2412000, 1},   {2416999, 1},  {2472000, 13}, {2483999, 15},
                 {2484001, 9},   {4999999, 0},   {5000000, 0},  {5179999, 35}, {5180000, 36},
                 {5885000, 177}, {5929999, 185}, {5930000, 1},  {5934999, 1},  {5935000, 2},
                 {5949999, 4},   {5950000, 0},   {5954999, 0},  {5955000, 1},  {7115000, 233},
                 {7124999, 234}, {7125000, 0},   {7125001, 0},  {56159999, 0}, {56160000, 0},
                 {56160001, 0},  {58319999, 0},  {58320000, 1}, {64799999, 3}, {64800000, 4},
                 {64800001, 0},  {HIGHEST, 0}};
    for (const auto& [khz, channel] : table) {
        EXPECT_EQ(frequency_to_channel(KiloHertz{khz}), channel) << khz;
    }
}

TEST(FrequencyConversion, JapaneseChannel14HasAFrequencyOfItsOwn) {
    EXPECT_EQ(frequency_to_channel(KiloHertz{2484000}), 14);
}

TEST(FrequencyConversion, FrequenciesOfChannels) {
    const struct {
        std::int32_t start;
        std::uint8_t channel;
        std::int32_t khz;
    } table[] = {{2407000, 1, 2412000},          {5000000, 0, 5000000},
                 {5000000, 36, 5180000},         {5950000, 233, 7115000},
                 {56159999, 255, 57434999},      {56160000, 2, 60480000},
                 {56160000, 255, 606960000},     {0, 255, 1275000},
                 {HIGHEST, 1, LOWEST + 2159999}, {LOWEST, 1, LOWEST + 5000}};
    for (const auto& [start, channel, khz] : table) {
        EXPECT_EQ(channel_to_frequency(KiloHertz{start}, channel).count(), khz) << start;
    }
}

TEST(FrequencyConversion, ChannelsSurviveTheWayThereAndBack) {
    // Up to the last channel of a band, and what the first one behind it turns into.
    const struct {
        std::int32_t start;
        int last;
        int beyond;
    } bands[] = {{2407000, 15, 10}, {5000000, 185, 1}, {5950000, 234, 0}, {56160000, 4, 0}};
    for (const auto& [start, last, beyond] : bands) {
        for (int channel = 0; channel <= last + 1; ++channel) {
            const auto khz =
                channel_to_frequency(KiloHertz{start}, static_cast<std::uint8_t>(channel));
            EXPECT_EQ(frequency_to_channel(khz), channel <= last ? channel : beyond)
                << start << " channel " << channel;
        }
    }
}

TEST(FrequencyConversion, BandsStartAtTheirChannelZero) {
    const std::int32_t starts[] = {2407000, 5000000, 5950000};
    for (int band = 0; band < 256; ++band) {
        EXPECT_EQ(band_to_starting_frequency(static_cast<FrequencyBand>(band)).count(),
                  band < 3 ? starts[band] : 0)
            << band;
    }
}

TEST(FrequencyConversion, BandsAroundEveryBorder) {
    const struct {
        std::int32_t khz;
        int detailed;
        int band;
    } table[] = {{LOWEST, 5, 3},  {0, 5, 3},       {2407000, 5, 3},  {2411999, 5, 3},
                 {2412000, 0, 0}, {2412001, 0, 0}, {2483999, 0, 0},  {2484000, 0, 0},
                 {2484001, 5, 3}, {5179999, 5, 3}, {5180000, 1, 1},  {5180001, 1, 1},
                 {5319999, 1, 1}, {5320000, 1, 1}, {5320001, 5, 3},  {5340000, 5, 3},
                 {5400000, 5, 3}, {5480000, 5, 3}, {5499999, 5, 3},  {5500000, 2, 1},
                 {5500001, 2, 1}, {5884999, 2, 1}, {5885000, 2, 1},  {5885001, 5, 3},
                 {5929999, 5, 3}, {5930000, 4, 2}, {5930001, 4, 2},  {7124999, 4, 2},
                 {7125000, 4, 2}, {7125001, 5, 3}, {58320000, 5, 3}, {HIGHEST, 5, 3}};
    for (const auto& [khz, detailed, band] : table) {
        EXPECT_EQ(static_cast<int>(frequency_to_detailed_band(KiloHertz{khz})), detailed) << khz;
        EXPECT_EQ(static_cast<int>(frequency_to_band(KiloHertz{khz})), band) << khz;
    }
}

TEST(FrequencyConversion, WidthsOfBandwidthsAnd25MHzIsTakenFor20) {
    for (int mhz = -1; mhz <= 400; ++mhz) {
        const int number = mhz == 20 || mhz == 25 ? 0
                           : mhz == 40            ? 1
                           : mhz == 80            ? 2
                           : mhz == 160           ? 3
                           : mhz == 320           ? 5
                                                  : 6;
        EXPECT_EQ(frequency_to_channel_width(MegaHertz{mhz}), width(number)) << mhz;
    }
}

TEST(FrequencyConversion, BandwidthAndCapabilityBitsOfWidths) {
    const int mhz[] = {20, 40, 80, 160, 80, 320};
    const unsigned bits[] = {0x01, 0x03, 0x07, 0x0F, 0x17, 0x2F};
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(channel_width_to_frequency(width(i)).count(), i < 6 ? mhz[i] : 0) << i;
        EXPECT_EQ(channel_width_capability_bits(width(i)).to_ulong(), i < 6 ? bits[i] : 0) << i;
    }
}

TEST(FrequencyConversion, WidthsOfCapabilityBitsAnd80Plus80Outranks160) {
    for (unsigned bits = 0; bits < 1024; ++bits) {
        auto greatest = ChannelWidth::INVALID;
        std::set<ChannelWidth> widths;
        for (int number = 0; number < 6; ++number) {
            if ((bits >> number & 1) != 0) {
                greatest = width(number);
                widths.insert(greatest);
            }
        }
        EXPECT_EQ(nuv::capability_bits_max_channel_width(bits), greatest) << bits;
        EXPECT_EQ(nuv::capability_bits_channel_widths(bits), widths) << bits;
    }
}

TEST(FrequencyConversion, CommonWidthOfEveryPair) {
    const std::string_view matrix[] = {"00000066", "01111166", "01222266", "01232366",
                                       "01224266", "01232566", "66666666", "66666666"};
    for (int a = 0; a < 8; ++a) {
        for (int b = 0; b < 8; ++b) {
            EXPECT_EQ(find_common_channel_width(width(a), width(b)),
                      width(matrix[a][static_cast<std::size_t>(b)] - '0'))
                << a << " and " << b;
        }
    }
}

TEST(FrequencyConversion, PHYTypesOfModes) {
    const int types[] = {4, 5, 6, 7, 9, 14, 18};
    for (int mode = 0; mode < 256; ++mode) {
        EXPECT_EQ(static_cast<int>(phymode_to_phytype(static_cast<WLANPhymode>(mode))),
                  mode < 7 ? types[mode] : 19);
    }
    for (unsigned modes = 0; modes < 128; ++modes) {
        int type = 19;
        for (int mode = 0; mode < 7; ++mode) {
            type = (modes >> mode & 1) != 0 ? types[mode] : type;
        }
        EXPECT_EQ(static_cast<int>(nuv::phymodesupportbits_to_phytype(modes)), type) << modes;
    }
}

TEST(FrequencyConversion, BestModeThatTheBandAllows) {
    const std::vector<int> best_first[] = {{6, 5, 3, 2, 1}, {6, 5, 4, 3, 0}, {6, 5}, {}, {}};
    for (int band = 0; band < 5; ++band) {
        for (unsigned modes = 0; modes < 128; ++modes) {
            int best = 7;
            for (const int mode : best_first[band]) {
                best = best == 7 && (modes >> mode & 1) != 0 ? mode : best;
            }
            EXPECT_EQ(get_max_phy_mode(static_cast<FrequencyBand>(band), modes),
                      static_cast<WLANPhymode>(best))
                << band << ' ' << modes;
        }
    }
}

}  // namespace
