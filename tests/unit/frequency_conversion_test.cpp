// SPDX-License-Identifier: Apache-2.0
#include "nuv/frequency_conversion.hpp"

#include <bit>

#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::test {
namespace {

ChannelWidth width(int number) { return static_cast<ChannelWidth>(number); }

TEST(FrequencyConversion, ChannelsAndBandsOfFrequenciesAsListed) {
    for (const auto& [call, expected] : listed_cases("frequencies.tsv")) {
        std::istringstream is(call);
        std::string what;
        std::int32_t khz = 0;
        int channel = 0;
        is >> what >> khz >> channel;
        const KiloHertz frequency{khz};
        std::ostringstream answer;
        if (what == "frequency") {
            answer << int{frequency_to_channel(frequency)} << ' '
                   << int(frequency_to_detailed_band(frequency)) << ' '
                   << int(frequency_to_band(frequency));
        } else {
            answer << channel_to_frequency(frequency, static_cast<std::uint8_t>(channel)).count();
        }
        EXPECT_EQ(answer.str(), expected) << call;
    }
}

TEST(FrequencyConversion, ChannelsSurviveTheWayThereAndBack) {
    // Up to the last channel of a band, and what the first one behind it turns into.
    const std::tuple<std::int32_t, int, int> bands[] = {
        {2407000, 15, 10}, {5000000, 185, 1}, {5950000, 234, 0}, {56160000, 4, 0}};
    for (const auto& [start, last, beyond] : bands) {
        for (int channel = 0; channel <= last + 1; ++channel) {
            const auto khz =
                channel_to_frequency(KiloHertz{start}, static_cast<std::uint8_t>(channel));
            EXPECT_EQ(frequency_to_channel(khz), channel <= last ? channel : beyond) << start;
        }
    }
    const std::int32_t starts[] = {2407000, 5000000, 5950000};
    for (int band = 0; band < 256; ++band) {
        EXPECT_EQ(band_to_starting_frequency(static_cast<FrequencyBand>(band)).count(),
                  band < 3 ? starts[band] : 0);
    }
}

TEST(FrequencyConversion, WidthsOfBandwidthsAndBackAnd25MHzIsTakenFor20) {
    const int mhz[] = {20, 40, 80, 160, 80, 320};
    const unsigned bits[] = {0x01, 0x03, 0x07, 0x0F, 0x17, 0x2F};
    for (int i = 0; i < 512; ++i) {
        const auto* at = std::ranges::find(mhz, i == 25 ? 20 : i);
        EXPECT_EQ(frequency_to_channel_width(MegaHertz{i}), width(static_cast<int>(at - mhz)));
        const ChannelWidth any = width(i % 256);
        EXPECT_EQ(channel_width_to_frequency(any).count(), i % 256 < 6 ? mhz[i % 256] : 0);
        EXPECT_EQ(channel_width_capability_bits(any).to_ulong(), i % 256 < 6 ? bits[i % 256] : 0);
    }
    EXPECT_EQ(frequency_to_channel_width(MegaHertz{-1}), ChannelWidth::INVALID);
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
        EXPECT_EQ(capability_bits_max_channel_width(bits), greatest) << bits;
        EXPECT_EQ(capability_bits_channel_widths(bits), widths) << bits;
    }
}

TEST(FrequencyConversion, CommonWidthOfEveryPair) {
    const std::string_view matrix[] = {"00000066", "01111166", "01222266", "01232366",
                                       "01224266", "01232566", "66666666", "66666666"};
    for (std::size_t i = 0; i < 64; ++i) {
        const auto a = static_cast<int>(i / 8), b = static_cast<int>(i % 8);
        EXPECT_EQ(find_common_channel_width(width(a), width(b)), width(matrix[i / 8][i % 8] - '0'))
            << a << " and " << b;
    }
}

TEST(FrequencyConversion, PHYTypesOfModes) {
    const int types[] = {4, 5, 6, 7, 9, 14, 18};
    for (unsigned i = 0; i < 256; ++i) {
        EXPECT_EQ(int(phymode_to_phytype(static_cast<WLANPhymode>(i))), i < 7 ? types[i] : 19);
        const unsigned modes = i % 128;
        EXPECT_EQ(int(phymodesupportbits_to_phytype(modes)),
                  modes == 0 ? 19 : types[std::bit_width(modes) - 1]);
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
}  // namespace nuv::test
