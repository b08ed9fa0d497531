// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>

#include "commands/command.hpp"
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

struct Options {
    std::int32_t frequency = 0;  // kHz
    std::string band;
    std::uint32_t number = 0;
    std::int32_t width = 20;  // MHz
};

/// Where an operating class has the channel, or else where the raster of the band would.
KiloHertz frequency_of(const Options& options) {
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

/// The exit status.
int run(const Options& options) {
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

}  // namespace

void add_channel(CLI::App& nuvctl, int& status) {
    auto* command = nuvctl.add_subcommand(
        "channel", "Tell number, frequency, operating classes and segments of a channel, as JSON");
    auto options = std::make_shared<Options>();
    auto* which = command->add_option_group("channel");
    which
        ->add_option("--frequency", options->frequency,
                     "Centre of the primary 20 MHz channel, in kHz")
        ->check(CLI::Range(1, 100'000'000));
    auto* band = which->add_option("--band", options->band, "GHz of the channel's band")
                     ->check(CLI::IsMember({"2.4", "5", "6"}));
    which->require_option(1);
    auto* number = command->add_option("--number", options->number, "The channel's number there")
                       ->check(CLI::Range(1, 255));
    band->needs(number);
    number->needs(band);
    command->add_option("--width", options->width, "MHz that it is the primary channel of")
        ->check(CLI::IsMember({20, 40, 80, 160, 320}))
        ->capture_default_str();
    command->footer(
        "A channel of 40 MHz in the 2.4 GHz band and one of 320 MHz may lie in two segments.\n\n"
        "Example: nuvctl channel --band 6 --number 37 --width 320");
    set_action(*command, status, [options] { return run(*options); });
}

}  // namespace nuvctl
