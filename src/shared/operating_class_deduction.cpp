// SPDX-License-Identifier: Apache-2.0
#include "nuv/operating_class_deduction.hpp"

#include <algorithm>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>

#include "internal/channel_raster.hpp"
#include "internal/classic_stream.hpp"
#include "internal/enum_table.hpp"
#include "internal/operating_class_tables.hpp"
#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/frequency_conversion.hpp"

namespace nuv::impl {

template <>
struct EnumTexts<OperatingClassDeduction::Region> {
    using Region = OperatingClassDeduction::Region;
    static constexpr EnumRow<Region> rows[] = {
        {Region::USA, "USA"},     {Region::EUROPE, "EUROPE"},
        {Region::JAPAN, "JAPAN"}, {Region::GLOBAL, "GLOBAL"},
        {Region::CHINA, "CHINA"}, {OTHERWISE, "unknown region value ", RowKind::NUMBERED},
    };
};

}  // namespace nuv::impl

namespace nuv::OperatingClassDeduction {
namespace {

using impl::operating_class_tables::segment_channels;
using impl::operating_class_tables::width_at;

constexpr std::size_t bit(ChannelCapabilityBit value) { return static_cast<std::size_t>(value); }

/// Behaviors of a 40 MHz class and the capability of a channel that goes with each.
constexpr std::pair<Behavior, ChannelCapabilityBit> PRIMARY_BEHAVIORS[] = {
    {Behavior::PRIMARY_LOWER, ChannelCapabilityBit::PRIMARY_LOWER_BEHAVIOR},
    {Behavior::PRIMARY_UPPER, ChannelCapabilityBit::PRIMARY_UPPER_BEHAVIOR},
};

// The text says "No ... is not valid": log readers match it as it is.
[[noreturn]] void throw_no_single_segment(std::uint8_t opclass, std::uint8_t channel) {
    throw std::invalid_argument(std::string("No single segment for provided opclass ") +
                                std::to_string(opclass) + " and channel " +
                                std::to_string(channel) + " is not valid!");
}

/// INVALID for the spacings that are no width: 5, 10 and 2160 MHz.
ChannelWidth width_of(const OpclassDefinition& row) {
    const ChannelWidth width = frequency_to_channel_width(row.channel_spacing);
    return width == ChannelWidth::HT80 && row.behaviors.contains(Behavior::SECONDARY_SEGMENT)
               ? ChannelWidth::HT8080
               : width;
}

KiloHertz frequency_of(const OpclassDefinition& row, std::uint8_t channel) {
    return channel_to_frequency(row.starting_frequency, channel);
}

std::vector<KiloHertz> frequencies_of(const OpclassDefinition& row, const ChannelSet& channels) {
    std::vector<KiloHertz> frequencies;
    frequencies.reserve(channels.size());
    for (const std::uint8_t channel : channels) {
        frequencies.push_back(frequency_of(row, channel));
    }
    return frequencies;
}

/// The channel or center of the class with that frequency.
std::optional<std::uint8_t> channel_at(const OpclassDefinition& row, KiloHertz frequency) {
    const std::int64_t offset =
        std::int64_t{frequency.count()} - std::int64_t{row.starting_frequency.count()};
    const auto step = static_cast<std::uint32_t>(impl::channel_step(row.starting_frequency));
    if (offset < 0 || offset > 255 * std::int64_t{step}) {
        return std::nullopt;
    }
    const auto distance = static_cast<std::uint32_t>(offset);
    const auto channel = static_cast<std::uint8_t>(distance / step);
    if (distance % step != 0) {
        return std::nullopt;
    }
    const bool known = row.channels.contains(channel) || row.center_channels.contains(channel);
    return known ? std::optional(channel) : std::nullopt;
}

/// Center of the segment whose primary channel this is, in a class without a list of centers.
std::uint8_t center_of(const OpclassDefinition& row, std::uint8_t primary) {
    if (width_of(row) != ChannelWidth::HT40) {
        return primary;
    }
    const bool lower = row.behaviors.contains(Behavior::PRIMARY_LOWER);
    if (!lower && !row.behaviors.contains(Behavior::PRIMARY_UPPER)) {
        throw std::invalid_argument(std::string("Provided opclass ") + std::to_string(row.opclass) +
                                    " has no primary channel behavior definition!");
    }
    return static_cast<std::uint8_t>(lower ? primary + 2 : primary - 2);
}

/// Centers of all segments.
ChannelSet centers_of(const OpclassDefinition& row) {
    ChannelSet centers = row.center_channels;
    if (centers.empty()) {
        for (const std::uint8_t channel : row.channels) {
            centers.insert(center_of(row, channel));
        }
    }
    return centers;
}

/// Centers of the segments that hold the channel.
ChannelSet centers_around(const OpclassDefinition& row, std::uint8_t channel) {
    ChannelSet centers;
    for (const std::uint8_t center : row.center_channels) {
        if (center == channel || segment_channels(row.channel_spacing, center).contains(channel)) {
            centers.insert(center);
        }
    }
    if (row.center_channels.empty() && row.channels.contains(channel)) {
        centers.insert(center_of(row, channel));
    }
    return centers;
}

/// Its width alone as capability of a channel; it must be one.
ChannelCapabilityBits width_capability(const OpclassDefinition& row) {
    return ChannelCapabilityBits().set(static_cast<std::size_t>(width_of(row)));
}

/// Its behavior as capabilities of a channel.
ChannelCapabilityBits side_capabilities(const OpclassDefinition& row) {
    ChannelCapabilityBits capabilities;
    for (const auto& [behavior, capability] : PRIMARY_BEHAVIORS) {
        capabilities.set(bit(capability), row.behaviors.contains(behavior));
    }
    return capabilities;
}

/// What a class adds to the capabilities of a channel: its width, and on which side of the center
/// the primary channel may lie. A class with centers does not tell, so the channel's place does.
ChannelCapabilityBits primary_capabilities(const OpclassDefinition& row, std::uint8_t channel) {
    ChannelCapabilityBits capabilities = width_capability(row);
    if (width_of(row) == ChannelWidth::HT40) {
        for (const std::uint8_t center : centers_around(row, channel)) {
            capabilities.set(bit(channel < center ? ChannelCapabilityBit::PRIMARY_LOWER_BEHAVIOR
                                                  : ChannelCapabilityBit::PRIMARY_UPPER_BEHAVIOR));
        }
    }
    return capabilities;
}

/// Whether nothing in `wanted` is missing in `offered`.
bool includes(const ChannelCapabilityBits& offered, const ChannelCapabilityBits& wanted) {
    return (wanted & ~offered).none();
}

template <class List>
void print_list(std::ostream& os, const char* label, const List& list) {
    os << label;
    const char* separator = "";
    for (const auto& element : list) {
        os << separator << element;
        separator = ", ";
    }
    os << ']';
}

std::vector<int> numbers(const auto& set) {
    std::vector<int> list;
    for (const auto element : set) {
        list.push_back(static_cast<int>(element));
    }
    return list;
}

/// The edges of each segment in MHz.
std::vector<std::string> ranges_of(const OpclassDefinition& row) {
    std::vector<std::string> ranges;
    const int half = width_at(row.channel_spacing).count() * 500;
    for (const KiloHertz center : frequencies_of(row, centers_of(row))) {
        impl::ClassicStream range;
        range << (center.count() - half) / 1e3 << '-' << (center.count() + half) / 1e3;
        ranges.push_back(std::move(range).str());
    }
    return ranges;
}

/// Null for a region that is known and has no table.
const OpclassLookup* find_table(Region region) {
    switch (region) {
        case Region::EUROPE:
            return &get_channel_opclasses_europe();
        case Region::GLOBAL:
            return &get_channel_opclasses_global();
        case Region::USA:
        case Region::JAPAN:
        case Region::CHINA:
            return nullptr;
    }
    throw std::invalid_argument("Unknown region.");
}

}  // namespace

NUV_DEFINE_ENUM_TEXTS(Region)

OpclassLookup::OpclassLookup(std::initializer_list<OpclassDefinition> definitions) {
    for (const OpclassDefinition& row : definitions) {
        groups_[row.channel_spacing].push_back(row);
    }
}

const OpclassDefinition& OpclassLookup::definition(std::uint8_t opclass) const {
    for (const auto& [spacing, rows] : groups_) {
        const auto row = std::ranges::find(rows, opclass, &OpclassDefinition::opclass);
        if (row != rows.end()) {
            return *row;
        }
    }
    throw std::invalid_argument(std::string("Provided opclass ") + std::to_string(opclass) +
                                " not valid!");
}

KiloHertz OpclassLookup::get_channel_frequency(std::uint8_t channel, std::uint8_t opclass) const {
    return frequency_of(definition(opclass), channel);
}

std::uint8_t OpclassLookup::get_channel_from_frequency(KiloHertz frequency,
                                                       std::uint8_t opclass) const {
    const auto channel = channel_at(definition(opclass), frequency);
    if (!channel) {
        throw std::invalid_argument(std::string("Provided freq ") +
                                    std::to_string(frequency.count()) + " and opclass " +
                                    std::to_string(opclass) + " is not valid!");
    }
    return *channel;
}

SmallVector<Segment, 2> OpclassLookup::get_segments(std::uint8_t channel,
                                                    std::uint8_t opclass) const {
    const OpclassDefinition& row = definition(opclass);
    SmallVector<Segment, 2> segments;
    for (const std::uint8_t center : centers_around(row, channel)) {
        segments.push_back(
            {center, frequency_of(row, center), segment_channels(row.channel_spacing, center)});
    }
    if (segments.empty()) {
        throw_no_single_segment(opclass, channel);
    }
    return segments;
}

SmallVector<KiloHertz, 2> OpclassLookup::get_segment_center_frequencies(
    std::uint8_t channel, std::uint8_t opclass) const {
    SmallVector<KiloHertz, 2> frequencies;
    for (const Segment& segment : get_segments(channel, opclass)) {
        frequencies.push_back(segment.center_frequency);
    }
    return frequencies;
}

std::vector<KiloHertz> OpclassLookup::get_opclass_center_frequencies(std::uint8_t opclass) const {
    const OpclassDefinition& row = definition(opclass);
    return frequencies_of(row, centers_of(row));
}

std::vector<KiloHertz> OpclassLookup::get_opclass_definition_channel_frequencies(
    std::uint8_t opclass) const {
    const OpclassDefinition& row = definition(opclass);
    return frequencies_of(row, row.center_channels.empty() ? row.channels : row.center_channels);
}

ChannelCapabilityBits OpclassLookup::get_channel_capabilities(std::uint8_t opclass) const {
    const OpclassDefinition& row = definition(opclass);
    return channel_width_capability_bits(width_of(row)) | side_capabilities(row);
}

ChannelSet OpclassLookup::get_all_opclass_channels(std::uint8_t opclass) const {
    return definition(opclass).channels;
}

ChannelSet OpclassLookup::get_segment_opclass_channels(std::uint8_t channel,
                                                       std::uint8_t opclass) const {
    const auto segments = get_segments(channel, opclass);
    if (segments.size() != 1) {
        throw_no_single_segment(opclass, channel);
    }
    return segments[0].channels;
}

OpclassSet OpclassLookup::get_all_region_opclasses() const {
    OpclassSet opclasses;
    for (const auto& [spacing, rows] : groups_) {
        for (const OpclassDefinition& row : rows) {
            opclasses.insert(row.opclass);
        }
    }
    return opclasses;
}

bool OpclassLookup::is_secondary_segment(std::uint8_t opclass) const {
    return definition(opclass).behaviors.contains(Behavior::SECONDARY_SEGMENT);
}

std::uint8_t OpclassLookup::get_opclass(ChannelWidth width, KiloHertz frequency,
                                        const Behaviors& behaviors) const {
    if (width >= ChannelWidth::INVALID) {
        return 0;  // else it would match the spacings that are no width
    }
    const bool secondary = width == ChannelWidth::HT8080;
    const auto fits = [&](const OpclassDefinition& row) {
        const bool shares_behavior = secondary || row.behaviors.empty() ||
                                     std::ranges::any_of(row.behaviors, [&](Behavior behavior) {
                                         return behaviors.contains(behavior);
                                     });
        return row.behaviors.contains(Behavior::SECONDARY_SEGMENT) == secondary &&
               shares_behavior && channel_at(row, frequency);
    };
    for (const auto& [spacing, rows] : groups_) {
        if (frequency_to_channel_width(spacing) != (secondary ? ChannelWidth::HT80 : width)) {
            continue;
        }
        const auto row = std::ranges::find_if(rows, fits);
        if (row != rows.end()) {
            return row->opclass;
        }
    }
    return 0;
}

Behaviors OpclassLookup::behaviors_from_channel_capabilities(
    ChannelCapabilityBits capabilities) const {
    Behaviors behaviors;
    if (capabilities[bit(ChannelCapabilityBit::HT8080)]) {
        behaviors.insert(Behavior::SECONDARY_SEGMENT);
    }
    for (const auto& [behavior, capability] : PRIMARY_BEHAVIORS) {
        if (capabilities[bit(capability)]) {
            behaviors.insert(behavior);
        }
    }
    return behaviors;
}

Behaviors OpclassLookup::behaviors_from_channel_info(const ChannelInfo& info) const {
    const auto& segment = info.get_primary_segment();
    if (!segment.is_set() || !info.get_primary_frequency().is_set()) {
        return {};
    }
    if (segment.get().width == ChannelWidth::HT8080) {
        return {Behavior::SECONDARY_SEGMENT};
    }
    const KiloHertz primary = info.get_primary_frequency().get();
    const KiloHertz center = segment.get().center_frequency;
    if (segment.get().width != ChannelWidth::HT40 || primary == center) {
        return {};
    }
    return {primary < center ? Behavior::PRIMARY_LOWER : Behavior::PRIMARY_UPPER};
}

/// A class for each segment, 0 where there is none. The primary frequency must be set.
SmallVector<std::uint8_t, 2> OpclassLookup::deduce(const ChannelInfo& info) const {
    const auto& segment = info.get_primary_segment();
    const ChannelWidth width = segment.is_set() ? segment.get().width : ChannelWidth::HT20;
    const Behaviors behaviors = behaviors_from_channel_info(info);
    const KiloHertz primary = info.get_primary_frequency().get();
    if (width != ChannelWidth::HT8080) {
        return {get_opclass(width, primary, behaviors)};
    }
    return {get_opclass(ChannelWidth::HT80, primary, behaviors),
            get_opclass(width, info.get_secondary_center_frequency(), behaviors)};
}

SmallVector<std::uint8_t, 2> OpclassLookup::get_opclasses_from_channel_info(
    const ChannelInfo& info) const {
    if (!info.get_primary_frequency().is_set()) {
        throw std::invalid_argument("Channel info has no primary frequency set");
    }
    auto opclasses = deduce(info);
    const auto* missing = std::ranges::find(opclasses, 0);
    if (missing != opclasses.end()) {
        throw std::logic_error(std::string("No mapping available for ")
                                   .append(missing == opclasses.begin() ? "primary" : "secondary")
                                   .append(" segment of channel info ")
                                   .append(info.to_string()));
    }
    return opclasses;
}

bool OpclassLookup::opclass_deducible_from_channel_info(const ChannelInfo& info) const {
    return info.get_primary_frequency().is_set() && std::ranges::count(deduce(info), 0) == 0;
}

bool OpclassLookup::opclass_deducible_from_channel_entry(const ChannelEntry& entry) const {
    return get_opclass(ChannelWidth::HT20, entry.get_frequency(), {}) != 0;
}

OpclassSet OpclassLookup::get_supported_operating_classes(const ChannelList& list) const {
    OpclassSet opclasses;
    for (const auto& [spacing, rows] : groups_) {
        for (const OpclassDefinition& row : rows) {
            if (width_of(row) == ChannelWidth::INVALID) {
                continue;
            }
            const auto wanted = width_capability(row) | side_capabilities(row);
            const auto is_capable = [&](const ChannelEntry& entry) {
                const auto channel = channel_at(row, entry.get_frequency());
                return channel && row.channels.contains(*channel) &&
                       includes(entry.get_capability_flags(), wanted);
            };
            if (std::ranges::any_of(list.get_channels(), is_capable)) {
                opclasses.insert(row.opclass);
            }
        }
    }
    return opclasses;
}

std::vector<KiloHertz> OpclassLookup::get_primary_frequencies_with_capabilities(
    ChannelCapabilityBits capabilities) const {
    capabilities.reset(bit(ChannelCapabilityBit::DFS));
    capabilities.reset(bit(ChannelCapabilityBit::DFS_WEATHER));
    std::map<KiloHertz, ChannelCapabilityBits> channels;
    for (const auto& [spacing, rows] : groups_) {
        for (const OpclassDefinition& row : rows) {
            if (width_of(row) == ChannelWidth::INVALID) {
                continue;
            }
            for (const std::uint8_t channel : row.channels) {
                channels[frequency_of(row, channel)] |= primary_capabilities(row, channel);
            }
        }
    }
    std::vector<KiloHertz> frequencies;
    for (const auto& [frequency, offered] : channels) {
        if (includes(offered, capabilities)) {
            frequencies.push_back(frequency);
        }
    }
    return frequencies;
}

void OpclassLookup::print_lookup_table(std::ostream& os) const {
    impl::ClassicStream text;
    text << "Full lookup table:\n";
    for (const auto& [spacing, rows] : groups_) {
        text << "Channel Width: " << spacing.count() << " MHz\n";
        for (const OpclassDefinition& row : rows) {
            text << "  Opclass: " << int{row.opclass};
            print_list(text, ", Channel List: [", numbers(row.channels));
            print_list(text, ", Freq Ranges: [", ranges_of(row));
            print_list(text, ", Behavior: [", numbers(row.behaviors));
            text << '\n';
        }
    }
    impl::write_text(os, text.view());
}

const OpclassLookup& get_channel_opclasses_global() {
    static const OpclassLookup lookup(impl::operating_class_tables::GLOBAL_CLASSES);
    return lookup;
}

const OpclassLookup& get_channel_opclasses_europe() {
    static const OpclassLookup lookup(impl::operating_class_tables::EUROPE_CLASSES);
    return lookup;
}

const OpclassLookup& get_channel_opclasses(Region region) {
    const OpclassLookup* table = find_table(region);
    if (table == nullptr) {
        throw std::invalid_argument("Not implemented yet.");
    }
    return *table;
}

SmallVector<std::uint8_t, 2> get_opclasses_from_channel_info(const ChannelInfo& info,
                                                             Region region) {
    const OpclassLookup* table = find_table(region);
    if (table == nullptr) {
        throw std::invalid_argument(enum_to_string(region) + " not implemented yet.");
    }
    return table->get_opclasses_from_channel_info(info);
}

}  // namespace nuv::OperatingClassDeduction
