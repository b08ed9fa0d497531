// SPDX-License-Identifier: Apache-2.0
#include "nuv/frequency_conversion.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

#include "internal/channel_raster.hpp"

namespace nuv {
namespace {

/// A closed range of frequencies in kHz and what is known of it.
struct ChannelRange {
    std::int32_t first, last;
    std::int32_t start;  ///< frequency of channel 0
};
constexpr ChannelRange CHANNEL_RANGES[] = {
    {0, 0, 0},                          // no frequency, no channel
    {2'484'000, 2'484'000, 2'414'000},  // channel 14 of Japan, off the others' raster
    {std::numeric_limits<std::int32_t>::min(), 2'483'999, 2'407'000},
    {2'484'001, 5'929'999, 5'000'000},
    {5'930'000, 5'949'999, 5'925'000},  // channel 2 of 6 GHz lies below its channel 1
    {5'950'000, 7'124'999, 5'950'000},
    {impl::START_60_GHZ + 1, 64'800'000, impl::START_60_GHZ},
};

struct BandRange {
    std::int32_t first, last;
    DetailedFrequencyBand band;
};
constexpr BandRange BAND_RANGES[] = {
    {2'412'000, 2'484'000, DetailedFrequencyBand::BAND_2_4_GHZ},
    {5'180'000, 5'320'000, DetailedFrequencyBand::BAND_5_GHZ_LOWER},
    {5'500'000, 5'885'000, DetailedFrequencyBand::BAND_5_GHZ_UPPER},
    {5'930'000, 7'125'000, DetailedFrequencyBand::BAND_6_GHZ},
};

/// The first of the ranges that holds the frequency, or null.
template <class Ranges>
auto find_range(const Ranges& ranges, KiloHertz frequency) {
    const auto* found = std::ranges::find_if(ranges, [&](const auto& range) {
        return range.first <= frequency.count() && frequency.count() <= range.last;
    });
    return found == std::ranges::end(ranges) ? nullptr : found;
}

struct Width {
    std::int32_t bandwidth;  // MHz
    std::uint32_t capability_bits;
};
/// By number of the width, which is also the number of its own capability bit.
constexpr std::array<Width, 6> WIDTHS{
    {{20, 0x01}, {40, 0x03}, {80, 0x07}, {160, 0x0F}, {80, 0x17}, {320, 0x2F}}};

constexpr std::size_t index(ChannelWidth width) { return static_cast<std::size_t>(width); }

}  // namespace

std::uint8_t frequency_to_channel(KiloHertz frequency) noexcept {
    const ChannelRange* range = find_range(CHANNEL_RANGES, frequency);
    // In 64 bits: the difference to a frequency far below zero does not fit 32.
    return range ? static_cast<std::uint8_t>((std::int64_t{frequency.count()} - range->start) /
                                             impl::channel_step(KiloHertz{range->start}))
                 : std::uint8_t{0};
}

KiloHertz channel_to_frequency(KiloHertz band_start, std::uint8_t channel) noexcept {
    return KiloHertz{static_cast<std::int32_t>(
        band_start.count() + std::int64_t{impl::channel_step(band_start)} * channel)};
}

KiloHertz band_to_starting_frequency(FrequencyBand band) noexcept {
    switch (band) {
        case FrequencyBand::BAND_2_4_GHZ:
            return KiloHertz{2'407'000};
        case FrequencyBand::BAND_5_GHZ:
            return KiloHertz{5'000'000};
        case FrequencyBand::BAND_6_GHZ:
            return KiloHertz{5'950'000};
        default:
            return KiloHertz{0};
    }
}

DetailedFrequencyBand frequency_to_detailed_band(KiloHertz frequency) noexcept {
    const BandRange* range = find_range(BAND_RANGES, frequency);
    return range ? range->band : DetailedFrequencyBand::INVALID_BAND;
}

FrequencyBand frequency_to_band(KiloHertz frequency) noexcept {
    switch (frequency_to_detailed_band(frequency)) {
        case DetailedFrequencyBand::BAND_2_4_GHZ:
            return FrequencyBand::BAND_2_4_GHZ;
        case DetailedFrequencyBand::BAND_5_GHZ_LOWER:
        case DetailedFrequencyBand::BAND_5_GHZ_UPPER:
        case DetailedFrequencyBand::BAND_5_GHZ_OTHER:
            return FrequencyBand::BAND_5_GHZ;
        case DetailedFrequencyBand::BAND_6_GHZ:
            return FrequencyBand::BAND_6_GHZ;
        default:
            return FrequencyBand::INVALID_BAND_MAX;
    }
}

ChannelWidth frequency_to_channel_width(MegaHertz bandwidth) noexcept {
    if (bandwidth.count() == 25) {
        return ChannelWidth::HT20;
    }
    // 80 MHz stands before 80+80 MHz and is the one found. What is not found is INVALID, the number
    // behind the last width.
    const auto* found = std::ranges::find(WIDTHS, bandwidth.count(), &Width::bandwidth);
    return static_cast<ChannelWidth>(found - WIDTHS.begin());
}

MegaHertz channel_width_to_frequency(ChannelWidth width) noexcept {
    return MegaHertz{width < ChannelWidth::INVALID ? WIDTHS[index(width)].bandwidth : 0};
}

ChannelCapabilityBits channel_width_capability_bits(ChannelWidth width) noexcept {
    return width < ChannelWidth::INVALID ? WIDTHS[index(width)].capability_bits : 0;
}

ChannelWidth capability_bits_max_channel_width(ChannelCapabilityBits bits) noexcept {
    for (std::size_t bit = WIDTHS.size(); bit-- > 0;) {
        if (bits[bit]) {
            return static_cast<ChannelWidth>(bit);
        }
    }
    return ChannelWidth::INVALID;
}

std::set<ChannelWidth> capability_bits_channel_widths(ChannelCapabilityBits bits) {
    std::set<ChannelWidth> widths;
    for (std::size_t bit = 0; bit < WIDTHS.size(); ++bit) {
        if (bits[bit]) {
            widths.insert(widths.end(), static_cast<ChannelWidth>(bit));
        }
    }
    return widths;
}

ChannelWidth find_common_channel_width(ChannelWidth a, ChannelWidth b) noexcept {
    if (std::max(a, b) >= ChannelWidth::INVALID) {
        return ChannelWidth::INVALID;
    }
    if (a != b && (a == ChannelWidth::HT8080 || b == ChannelWidth::HT8080)) {
        a = std::min(a, ChannelWidth::HT80);
    }
    return std::min(a, b);
}

PHYType phymode_to_phytype(WLANPhymode mode) noexcept {
    constexpr std::array<PHYType, 7> types{PHYType::OFDM, PHYType::HRDSSS, PHYType::ERP,
                                           PHYType::HT,   PHYType::VHT,    PHYType::HE,
                                           PHYType::EHT};
    return mode < WLANPhymode::INVALID_MAX ? types[static_cast<std::size_t>(mode)]
                                           : PHYType::INVALID_PHYTYPE_MAX;
}

PHYType phymodesupportbits_to_phytype(WLANPhymodeBits modes) noexcept {
    for (std::size_t bit = modes.size(); bit-- > 0;) {
        if (modes[bit]) {
            return phymode_to_phytype(static_cast<WLANPhymode>(bit));
        }
    }
    return PHYType::INVALID_PHYTYPE_MAX;
}

WLANPhymode get_max_phy_mode(FrequencyBand band, WLANPhymodeBits modes) noexcept {
    using enum WLANPhymode;
    // Best first, by number of the band; INVALID_MAX ends a row.
    constexpr WLANPhymode allowed[][6] = {
        {BE, AX, N, G, B, INVALID_MAX}, {BE, AX, AC, N, A, INVALID_MAX}, {BE, AX, INVALID_MAX}};
    if (band >= FrequencyBand::INVALID_BAND_MAX) {
        return INVALID_MAX;
    }
    return *std::ranges::find_if(allowed[static_cast<std::size_t>(band)], [&](WLANPhymode mode) {
        return mode == INVALID_MAX || modes[static_cast<std::size_t>(mode)];
    });
}

}  // namespace nuv
