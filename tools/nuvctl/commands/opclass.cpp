// SPDX-License-Identifier: Apache-2.0
#include "nuv/operating_class_deduction.hpp"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "json/writer.hpp"

namespace nuvctl {

namespace {

namespace deduction = nuv::OperatingClassDeduction;
using deduction::Behavior;
using deduction::OpclassDefinition;

void write_row(const OpclassDefinition& row) {
    write_object(std::cout, false, [&](Json& json) {
        json.number("opclass", row.opclass);
        json.number("starting_frequency_khz",
                    static_cast<std::uint64_t>(row.starting_frequency.count()));
        json.number("spacing_mhz", static_cast<std::uint64_t>(row.channel_spacing.count()));
        json.numbers("channels", row.channels);
        json.numbers("center_channels", row.center_channels);
        json.numbers("behaviors", row.behaviors);
    });
}

/// The numbers, three or more of the same step as a run: "50 114 163", "36-64/4 100-144/4".
std::string runs(const deduction::ChannelSet& set) {
    const std::vector<int> numbers(set.begin(), set.end());
    std::string text;
    for (std::size_t first = 0; first < numbers.size();) {
        std::size_t last = first;
        const int step = first + 1 < numbers.size() ? numbers[first + 1] - numbers[first] : 0;
        while (last + 1 < numbers.size() && numbers[last + 1] - numbers[last] == step) {
            ++last;
        }
        text += (text.empty() ? "" : " ") + std::to_string(numbers[first]);
        if (last < first + 2) {
            ++first;
            continue;
        }
        text += '-' + std::to_string(numbers[last]);
        if (step > 1) {
            text += '/' + std::to_string(step);
        }
        first = last + 1;
    }
    return text.empty() ? "-" : text;
}

std::string name_of(const deduction::Behaviors& behaviors) {
    return behaviors.contains(Behavior::PRIMARY_LOWER)       ? "primary lower"
           : behaviors.contains(Behavior::PRIMARY_UPPER)     ? "primary upper"
           : behaviors.contains(Behavior::SECONDARY_SEGMENT) ? "80+80"
                                                             : "-";
}

void print_line(const std::string& opclass, const std::string& start, const std::string& spacing,
                const std::string& behavior, const std::string& channels,
                const std::string& centers) {
    std::cout << std::left << std::setw(7) << opclass << std::setw(11) << start << std::setw(13)
              << spacing << std::setw(15) << behavior << std::setw(30) << channels << centers
              << '\n';
}

void print_row(const OpclassDefinition& row) {
    std::string start = std::to_string(row.starting_frequency.count() / 1000);
    start += row.starting_frequency.count() % 1000 != 0 ? ".5" : "";
    print_line(std::to_string(row.opclass), start, std::to_string(row.channel_spacing.count()),
               name_of(row.behaviors), runs(row.channels), runs(row.center_channels));
}

}  // namespace

int run_opclass(const OpclassOptions& options) {
    std::vector<OpclassDefinition> rows;
    const auto& table = deduction::get_channel_opclasses(
        options.region == "europe" ? deduction::Region::EUROPE : deduction::Region::GLOBAL);
    for (const auto& [spacing, group] : table.get_groups()) {
        rows.insert(rows.end(), group.begin(), group.end());
    }
    std::ranges::sort(rows, {}, &OpclassDefinition::opclass);
    std::vector<unsigned> classes = options.classes;
    if (classes.empty()) {
        for (const OpclassDefinition& row : rows) {
            classes.push_back(row.opclass);
        }
    }
    if (options.table) {
        print_line("class", "start MHz", "spacing MHz", "behavior", "channels", "centers");
    }
    int status = 0;
    for (const unsigned opclass : classes) {
        const auto row = std::ranges::find(rows, opclass, &OpclassDefinition::opclass);
        if (row == rows.end()) {
            report(std::to_string(opclass) + ": the " + options.region +
                   " table has no such operating class");
            status = 1;
            continue;
        }
        options.table ? print_row(*row) : write_row(*row);
    }
    return status;
}

}  // namespace nuvctl
