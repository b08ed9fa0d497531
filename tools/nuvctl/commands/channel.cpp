// SPDX-License-Identifier: Apache-2.0
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "json/writer.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/operating_class_deduction.hpp"

namespace nuvctl {

namespace {

using nuv::FrequencyBand;
using nuv::KiloHertz;
using nuv::MegaHertz;
using nuv::OperatingClassDeduction::OpclassDefinition;
using nuv::OperatingClassDeduction::OpclassLookup;
using nuv::OperatingClassDeduction::Region;

/// Where an operating class has the channel, or else where the raster of the band would.
KiloHertz frequency_of(const ChannelOptions& options) {
    if (options.band.empty()) {
        return KiloHertz{options.frequency};
    }
    const std::map<std::string, FrequencyBand> bands{{"2.4", FrequencyBand::BAND_2_4_GHZ},
                                                     {"5", FrequencyBand::BAND_5_GHZ},
                                                     {"6", FrequencyBand::BAND_6_GHZ}};
    const FrequencyBand band = bands.at(options.band);
    const auto number = static_cast<std::uint8_t>(options.number);
    for (const auto& [spacing, rows] : get_channel_opclasses(Region::GLOBAL).get_groups()) {
        for (const OpclassDefinition& row : rows) {
            const KiloHertz frequency = channel_to_frequency(row.starting_frequency, number);
            if (row.channels.contains(number) && frequency_to_band(frequency) == band) {
                return frequency;
            }
        }
    }
    return channel_to_frequency(band_to_starting_frequency(band), number);
}

/// The classes of a channel as primary channel of a width, and by their centre's frequency the
/// segments that it lies in.
struct Place {
    std::map<KiloHertz, nuv::OperatingClassDeduction::Segment> segments;
    std::map<Region, nuv::OperatingClassDeduction::OpclassSet> opclasses;
};

Place place_of(KiloHertz frequency, std::int32_t width) {
    Place place;
    for (const Region region : {Region::GLOBAL, Region::EUROPE}) {
        const OpclassLookup& table = get_channel_opclasses(region);
        auto& opclasses = place.opclasses[region];
        for (const auto& [spacing, rows] : table.get_groups()) {
            if (frequency_to_channel_width(spacing) !=
                frequency_to_channel_width(MegaHertz{width})) {
                continue;
            }
            for (const OpclassDefinition& row : rows) {
                for (const std::uint8_t channel : row.channels) {
                    if (table.get_channel_frequency(channel, row.opclass) == frequency &&
                        !table.is_secondary_segment(row.opclass)) {
                        opclasses.insert(row.opclass);
                        for (const auto& segment : table.get_segments(channel, row.opclass)) {
                            place.segments.emplace(segment.center_frequency, segment);
                        }
                    }
                }
            }
        }
    }
    return place;
}

}  // namespace

int run_channel(const ChannelOptions& options) {
    const KiloHertz frequency = frequency_of(options);
    const Place place = place_of(frequency, options.width);
    if (place.segments.empty()) {
        report(std::to_string(frequency.count()) + " kHz: no operating class has a channel of " +
               std::to_string(options.width) + " MHz there");
        return 1;
    }
    std::ostringstream band;
    band << frequency_to_band(frequency);
    write_object(std::cout, false, [&](Json& json) {
        json.number("number", nuv::frequency_to_channel(frequency));
        json.number("frequency_khz", static_cast<std::uint64_t>(frequency.count()));
        json.text("band", band.str());
        json.number("width_mhz", static_cast<std::uint64_t>(options.width));
        json.numbers("opclasses_global", place.opclasses.at(Region::GLOBAL));
        json.numbers("opclasses_europe", place.opclasses.at(Region::EUROPE));
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
