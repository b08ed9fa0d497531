// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>

#include "internal/channel_raster.hpp"
#include "nuv/operating_class_deduction.hpp"

// The operating classes of IEEE 802.11-2020, Annex E, as constants that are checked while they are
// compiled. The global table is that of Table E-4, the European one of Table E-2.

namespace nuv::impl::operating_class_tables {

using OperatingClassDeduction::Behavior;
using OperatingClassDeduction::Behaviors;
using OperatingClassDeduction::ChannelSet;
using OperatingClassDeduction::OpclassDefinition;

/// The 20 MHz channels of a segment; where channels are not numbered in steps of 5 MHz, and where
/// they are no wider than 20 MHz, the segment is one channel.
constexpr ChannelSet segment_channels(MegaHertz spacing, std::uint8_t center) {
    const bool wide = spacing >= MegaHertz{40} && spacing <= MegaHertz{320};
    const int count = wide ? spacing.count() / 20 : 1;
    ChannelSet channels;
    for (int i = 0; i < count; ++i) {
        channels.insert(static_cast<std::uint8_t>(center - 2 * (count - 1) + 4 * i));
    }
    return channels;
}

/// Channel numbers from `first` to `last`.
struct Run {
    std::uint8_t first = 0, last = 0;
    std::uint8_t step = 1;
};

/// Not a constant if a number stands twice or a run is empty.
consteval ChannelSet channels(std::initializer_list<Run> runs) {
    ChannelSet set;
    for (const auto& [first, last, step] : runs) {
        if (step == 0 || first > last || (last - first) % step != 0) {
            throw "a run without end";
        }
        for (int channel = first; channel <= last; channel += step) {
            if (set.contains(static_cast<std::uint8_t>(channel))) {
                throw "a number stands twice";
            }
            set.insert(static_cast<std::uint8_t>(channel));
        }
    }
    return set;
}

inline constexpr KiloHertz START_2_4{2'407'000};
inline constexpr KiloHertz START_2_4_JAPAN{2'414'000};  // channel 14 lies off the others' raster
inline constexpr KiloHertz START_5{5'000'000};
inline constexpr KiloHertz START_5_ITS{5'002'500};
inline constexpr KiloHertz START_6{5'950'000};
inline constexpr KiloHertz START_6_CHANNEL_2{5'925'000};  // below channel 1
inline constexpr KiloHertz START_60{START_60_GHZ};

inline constexpr MegaHertz MHZ_5{5}, MHZ_10{10}, MHZ_20{20}, MHZ_25{25}, MHZ_40{40}, MHZ_80{80},
    MHZ_160{160}, MHZ_320{320}, MHZ_2160{2160};

/// Width of a channel: 25 MHz is the distance at which channels of 20 MHz do not disturb each other.
constexpr MegaHertz width_at(MegaHertz spacing) { return spacing == MHZ_25 ? MHZ_20 : spacing; }

inline constexpr Behaviors LOWER{Behavior::PRIMARY_LOWER};
inline constexpr Behaviors UPPER{Behavior::PRIMARY_UPPER};
inline constexpr Behaviors SECONDARY{Behavior::SECONDARY_SEGMENT};

// The wide classes of the 5 GHz band are the same in both tables, although Europe's classes of 20
// MHz do not have all of their channels.
inline constexpr OpclassDefinition CLASS_128{
    128,
    START_5,
    MHZ_80,
    channels({{36, 64, 4}, {100, 144, 4}, {149, 177, 4}}),
    channels({{42, 58, 16}, {106, 138, 16}, {155, 171, 16}}),
    {}};
inline constexpr OpclassDefinition CLASS_129{129,
                                             START_5,
                                             MHZ_160,
                                             channels({{36, 64, 4}, {100, 128, 4}, {149, 177, 4}}),
                                             channels({{50, 50}, {114, 114}, {163, 163}}),
                                             {}};
inline constexpr OpclassDefinition CLASS_130{
    130, START_5, MHZ_80, CLASS_128.channels, CLASS_128.center_channels, SECONDARY};

// Class 124 is absent on purpose: its channels 149 to 161 are those of class 125, which has 149 to
// 177 in a row.
constexpr std::initializer_list<OpclassDefinition> GLOBAL_CLASSES = {
    {81, START_2_4, MHZ_25, channels({{1, 13}}), {}, {}},
    {82, START_2_4_JAPAN, MHZ_25, channels({{14, 14}}), {}, {}},
    {83, START_2_4, MHZ_40, channels({{1, 9}}), {}, LOWER},
    {84, START_2_4, MHZ_40, channels({{5, 13}}), {}, UPPER},
    {115, START_5, MHZ_20, channels({{36, 48, 4}}), {}, {}},
    {116, START_5, MHZ_40, channels({{36, 44, 8}}), {}, LOWER},
    {117, START_5, MHZ_40, channels({{40, 48, 8}}), {}, UPPER},
    {118, START_5, MHZ_20, channels({{52, 64, 4}}), {}, {}},
    {119, START_5, MHZ_40, channels({{52, 60, 8}}), {}, LOWER},
    {120, START_5, MHZ_40, channels({{56, 64, 8}}), {}, UPPER},
    {121, START_5, MHZ_20, channels({{100, 144, 4}}), {}, {}},
    {122, START_5, MHZ_40, channels({{100, 140, 8}}), {}, LOWER},
    {123, START_5, MHZ_40, channels({{104, 144, 8}}), {}, UPPER},
    {125, START_5, MHZ_20, channels({{149, 177, 4}}), {}, {}},
    {126, START_5, MHZ_40, channels({{149, 173, 8}}), {}, LOWER},
    {127, START_5, MHZ_40, channels({{153, 177, 8}}), {}, UPPER},
    CLASS_128,
    CLASS_129,
    CLASS_130,
    {131, START_6, MHZ_20, channels({{1, 233, 4}}), {}, {}},
    // Channel 233 is in no wide class. The primary channel of 40 MHz may be either one here.
    {132, START_6, MHZ_40, channels({{1, 229, 4}}), channels({{3, 227, 8}}), {}},
    {133, START_6, MHZ_80, channels({{1, 221, 4}}), channels({{7, 215, 16}}), {}},
    {134, START_6, MHZ_160, channels({{1, 221, 4}}), channels({{15, 207, 32}}), {}},
    {135, START_6, MHZ_80, channels({{1, 221, 4}}), channels({{7, 215, 16}}), SECONDARY},
    {136, START_6_CHANNEL_2, MHZ_20, channels({{2, 2}}), {}, {}},
    {137, START_6, MHZ_320, channels({{1, 221, 4}}), channels({{31, 191, 32}}), {}},
    {180, START_60, MHZ_2160, channels({{1, 6}}), {}, {}},
};

constexpr std::initializer_list<OpclassDefinition> EUROPE_CLASSES = {
    {1, START_5, MHZ_20, channels({{36, 48, 4}}), {}, {}},
    {2, START_5, MHZ_20, channels({{52, 64, 4}}), {}, {}},
    {3, START_5, MHZ_20, channels({{100, 140, 4}}), {}, {}},
    {4, START_2_4, MHZ_25, channels({{1, 13}}), {}, {}},
    {5, START_5, MHZ_40, channels({{36, 44, 8}}), {}, LOWER},
    {6, START_5, MHZ_40, channels({{52, 60, 8}}), {}, LOWER},
    {7, START_5, MHZ_40, channels({{100, 132, 8}}), {}, LOWER},
    {8, START_5, MHZ_40, channels({{40, 48, 8}}), {}, UPPER},
    {9, START_5, MHZ_40, channels({{56, 64, 8}}), {}, UPPER},
    {10, START_5, MHZ_40, channels({{104, 136, 8}}), {}, UPPER},
    {11, START_2_4, MHZ_40, channels({{1, 9}}), {}, LOWER},
    {12, START_2_4, MHZ_40, channels({{5, 13}}), {}, UPPER},
    // 13 to 16 are those of intelligent transport systems.
    {13, START_5_ITS, MHZ_5, channels({{171, 184}}), {}, {}},
    {14, START_5, MHZ_10, channels({{171, 184}}), {}, {}},
    {15, START_5, MHZ_20, channels({{172, 183}}), {}, {}},
    {16, START_5, MHZ_20, channels({{100, 140, 4}}), {}, {}},
    {17, START_5, MHZ_20, channels({{149, 169, 4}}), {}, {}},
    {18, START_60, MHZ_2160, channels({{1, 6}}), {}, {}},
    CLASS_128,
    CLASS_129,
    CLASS_130,
};

/// From the lower edge of the band's first channel to the upper edge of its last one.
struct Band {
    KiloHertz first_start, last_start;            ///< starting frequencies of its classes
    std::int32_t lower_edge = 0, upper_edge = 0;  ///< kHz
    std::array<MegaHertz, 3> narrow{};            ///< spacings of its classes that are not wide
};
inline constexpr Band BANDS[] = {
    {START_2_4, START_2_4, 2'400'000, 2'483'000, {MHZ_25}},
    {START_2_4_JAPAN, START_2_4_JAPAN, 2'474'000, 2'495'000, {MHZ_25}},
    {START_5, START_5_ITS, 5'170'000, 5'925'000, {MHZ_5, MHZ_10, MHZ_20}},
    {START_6_CHANNEL_2, START_6, 5'925'000, 7'125'000, {MHZ_20}},
    {START_60, START_60, 57'240'000, 70'200'000, {MHZ_2160}},
};

consteval bool spacing_has_its_centers(const OpclassDefinition& row) {
    const int sides = row.behaviors.contains(Behavior::PRIMARY_LOWER) +
                      row.behaviors.contains(Behavior::PRIMARY_UPPER);
    const bool secondary = row.behaviors.contains(Behavior::SECONDARY_SEGMENT);
    switch (row.channel_spacing.count()) {
        case 40:
            return !secondary && sides == (row.center_channels.empty() ? 1 : 0);
        case 80:
            return sides == 0 && !row.center_channels.empty();
        case 160:
        case 320:
            return row.behaviors.empty() && !row.center_channels.empty();
        case 5:
        case 10:
        case 20:
        case 25:
        case 2160:
            return row.behaviors.empty() && row.center_channels.empty();
        default:
            return false;
    }
}

/// A class with centers has the channels of their segments and no others.
consteval bool centers_cover_channels(const OpclassDefinition& row) {
    ChannelSet covered;
    for (const std::uint8_t center : row.center_channels) {
        for (const std::uint8_t channel : segment_channels(row.channel_spacing, center)) {
            covered.insert(channel);
        }
    }
    return covered.empty() || covered == row.channels;
}

consteval bool lies_in_its_band(const OpclassDefinition& row) {
    const auto* band = std::ranges::find_if(BANDS, [&](const Band& candidate) {
        return candidate.first_start <= row.starting_frequency &&
               row.starting_frequency <= candidate.last_start;
    });
    if (band == std::ranges::end(BANDS)) {
        return false;
    }
    const std::int32_t spacing = width_at(row.channel_spacing).count() * 1'000;
    const auto fits = [&](int channel, std::int32_t width) {
        const std::int32_t frequency =
            row.starting_frequency.count() + channel * channel_step(row.starting_frequency);
        return band->lower_edge <= frequency - width / 2 &&
               frequency + width / 2 <= band->upper_edge;
    };
    // Wide channels are tried by their centers; the channels in them are 20 MHz wide.
    const bool wide = row.channel_spacing >= MHZ_40 && row.channel_spacing <= MHZ_320;
    if (!wide && std::ranges::find(band->narrow, row.channel_spacing) == band->narrow.end()) {
        return false;
    }
    for (const std::uint8_t channel : row.channels) {
        const int side = row.behaviors == LOWER ? 2 : row.behaviors == UPPER ? -2 : 0;
        if (!fits(channel + side, wide && side == 0 ? 20'000 : spacing)) {
            return false;
        }
    }
    return std::ranges::all_of(row.center_channels,
                               [&](std::uint8_t center) { return fits(center, spacing); });
}

/// The primary channels below have the same centers as those above.
consteval bool sides_have_the_same_centers(const OpclassDefinition& lower,
                                           std::initializer_list<OpclassDefinition> rows) {
    ChannelSet upper_channels;
    for (const std::uint8_t channel : lower.channels) {
        upper_channels.insert(static_cast<std::uint8_t>(channel + 4));
    }
    return std::ranges::any_of(rows, [&](const OpclassDefinition& row) {
        return row.behaviors == UPPER && row.starting_frequency == lower.starting_frequency &&
               row.channels == upper_channels;
    });
}

consteval bool is_sound(std::initializer_list<OpclassDefinition> rows) {
    for (const auto* row = rows.begin(); row != rows.end(); ++row) {
        const bool ascends = row == rows.begin() || std::prev(row)->opclass < row->opclass;
        if (!ascends || row->opclass == 0 || row->channels.empty() ||
            !spacing_has_its_centers(*row) || !centers_cover_channels(*row) ||
            !lies_in_its_band(*row) ||
            (row->behaviors == LOWER && !sides_have_the_same_centers(*row, rows))) {
            return false;
        }
    }
    return true;
}
static_assert(GLOBAL_CLASSES.size() == 27 && is_sound(GLOBAL_CLASSES));
static_assert(EUROPE_CLASSES.size() == 21 && is_sound(EUROPE_CLASSES));

}  // namespace nuv::impl::operating_class_tables
