// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "json/writer.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/operating_class_deduction.hpp"

namespace nuvctl {

namespace {

using nuv::KiloHertz;
using nuv::MegaHertz;
using nuv::OperatingClassDeduction::Behavior;
using nuv::OperatingClassDeduction::ChannelSet;
using nuv::OperatingClassDeduction::OpclassDefinition;
using nuv::OperatingClassDeduction::OpclassLookup;
using nuv::OperatingClassDeduction::Region;
using nuv::OperatingClassDeduction::Segment;

/// GHz of the band that the class lies in, as in --band.
std::string band_of(const OpclassDefinition& row) {
    const std::int32_t start = row.starting_frequency.count();
    return start < 5'000'000 ? "2.4" : start < 5'900'000 ? "5" : start < 56'000'000 ? "6" : "60";
}

/// Of one channel: 25 MHz is the distance of the 20 MHz channels in the 2.4 GHz band.
MegaHertz megahertz_of(const OpclassDefinition& row) {
    return row.channel_spacing == MegaHertz{25} ? MegaHertz{20} : row.channel_spacing;
}

/// As in --width.
std::string width_of(const OpclassDefinition& row) {
    return row.behaviors.contains(Behavior::SECONDARY_SEGMENT)
               ? "80+80"
               : std::to_string(megahertz_of(row).count());
}

/// A segment of a class, by its center or by one of the primary channels in it.
struct Found {
    Region region{};
    const OpclassDefinition& row;
    const Segment& segment;
    bool by_center = false;
    std::uint8_t number = 0;
    KiloHertz frequency;
};

/// Calls `function` with every segment that has the number or frequency, whatever its width.
template <class Function>
void for_each_found(const ChannelOptions& options, Function function) {
    const auto show_if_wanted = [&](const Found& found) {
        if (options.band.empty() ? found.frequency == KiloHertz{options.frequency}
                                 : found.number == options.number) {
            function(found);
        }
    };
    for (const Region region : {Region::GLOBAL, Region::EUROPE}) {
        const OpclassLookup& table = get_channel_opclasses(region);
        for (const auto& [spacing, rows] : table.get_groups()) {
            for (const OpclassDefinition& row : rows) {
                if (!options.band.empty() && options.band != band_of(row)) {
                    continue;
                }
                for (const std::uint8_t channel : row.channels) {
                    const auto frequency = table.get_channel_frequency(channel, row.opclass);
                    for (const Segment& segment : table.get_segments(channel, row.opclass)) {
                        show_if_wanted({region, row, segment, false, channel, frequency});
                        show_if_wanted(
                            {region, row, segment, true, segment.center, segment.center_frequency});
                    }
                }
            }
        }
    }
}

/// What there is of the width that was asked for.
struct Place {
    std::uint8_t number = 0;
    KiloHertz frequency;
    std::string band;
    MegaHertz width;
    std::map<KiloHertz, Segment> segments;  ///< by the frequency of their center
    /// The centers of each class.
    std::map<Region, std::map<std::uint8_t, ChannelSet>> opclasses;

    void add(const Found& found) {
        number = found.number;
        frequency = found.frequency;
        band = band_of(found.row) + " GHz";
        width = megahertz_of(found.row);
        segments.emplace(found.segment.center_frequency, found.segment);
        opclasses[found.region][found.row.opclass].insert(found.segment.center);
    }
};

/// What there is of other widths.
struct Elsewhere {
    std::optional<KiloHertz> frequency;
    std::vector<std::string> center_of;  ///< widths

    void add(const Found& found) {
        frequency = found.frequency;
        // A channel that is its own segment is nobody's idea of a center.
        const std::string width = width_of(found.row);
        if (found.by_center && !found.segment.channels.contains(found.number) &&
            std::ranges::count(center_of, width) == 0) {
            center_of.push_back(width);
        }
    }
};

/// Why there is nothing of the width that was asked for.
std::string refusal(const ChannelOptions& options, const Elsewhere& elsewhere) {
    if (!options.band.empty() && !elsewhere.frequency) {
        return "the " + options.band + " GHz band has no channel or center " +
               std::to_string(options.number);
    }
    const auto frequency = elsewhere.frequency.value_or(KiloHertz{options.frequency}).count();
    std::string text = std::to_string(frequency) + " kHz: no operating class has a " +
                       (options.center ? "center" : "channel") + " of " + options.width +
                       " MHz there" + megahertz_hint(frequency);
    if (!options.center && !elsewhere.center_of.empty()) {
        text += "; it is a center of ";
        for (const std::string& width : elsewhere.center_of) {
            text += width + (width == elsewhere.center_of.back() ? " MHz: see --center" : ", ");
        }
    }
    return text;
}

void write_opclasses(Json& json, const std::string& name,
                     const std::map<std::uint8_t, ChannelSet>& opclasses) {
    json.open_list(name);
    for (const auto& [opclass, centers] : opclasses) {
        json.open_object({});
        json.number("opclass", opclass);
        json.numbers("centers", centers);
        json.close_object();
    }
    json.close_list();
}

}  // namespace

int run_channel(const ChannelOptions& options) {
    Place place;
    Elsewhere elsewhere;
    for_each_found(options, [&](const Found& found) {
        if (found.by_center == options.center && width_of(found.row) == options.width) {
            place.add(found);
        } else {
            elsewhere.add(found);
        }
    });
    if (place.segments.empty()) {
        report(refusal(options, elsewhere));
        return 1;
    }
    write_object(std::cout, false, [&](Json& json) {
        json.number("number", place.number);
        json.number("frequency_khz", static_cast<std::uint64_t>(place.frequency.count()));
        json.text("band", place.band);
        json.number("width_mhz", static_cast<std::uint64_t>(place.width.count()));
        write_opclasses(json, "opclasses_global", place.opclasses[Region::GLOBAL]);
        write_opclasses(json, "opclasses_europe", place.opclasses[Region::EUROPE]);
        json.open_list("segments");
        for (const auto& [center, segment] : place.segments) {
            json.open_object({});
            json.number("center", segment.center);
            json.number("center_frequency_khz", static_cast<std::uint64_t>(center.count()));
            json.numbers("channels", segment.channels);
            json.close_object();
        }
        json.close_list();
    });
    return 0;
}

}  // namespace nuvctl
