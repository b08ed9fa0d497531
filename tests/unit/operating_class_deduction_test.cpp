// SPDX-License-Identifier: Apache-2.0
#include "nuv/operating_class_deduction.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <ranges>
#include <sstream>
#include <utility>

#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/frequency_conversion.hpp"
#include "tests/support/channel_info_text.hpp"
#include "tests/support/enum_texts.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/listed_cases.hpp"

namespace nuv::OperatingClassDeduction {
namespace {

using test::message_of;
using Numbers = std::vector<int>;

constexpr Region regions[] = {Region::EUROPE, Region::GLOBAL};

Numbers numbers(const auto& list) {
    Numbers result;
    for (const auto element : list) {
        if constexpr (requires { element.count(); }) {
            result.push_back(element.count());
        } else {
            result.push_back(static_cast<int>(element));
        }
    }
    return result;
}

std::vector<OpclassDefinition> rows(Region region) {
    std::vector<OpclassDefinition> result;
    for (const auto& [spacing, group] : get_channel_opclasses(region).get_groups()) {
        result.insert(result.end(), group.begin(), group.end());
    }
    return result;
}

ChannelWidth width_of(const OpclassDefinition& row) {
    return row.behaviors.contains(Behavior::SECONDARY_SEGMENT)
               ? ChannelWidth::HT8080
               : frequency_to_channel_width(row.channel_spacing);
}

ChannelEntry entry(std::uint8_t channel, int frequency, unsigned capabilities) {
    return {channel, KiloHertz{frequency}, capabilities, {}, {}, {}, {}, {}};
}

/// One number, or several with blanks between; a segment as its members with a bar between.
std::string text(const auto& value) {
    if constexpr (requires { value[0].center_frequency; }) {
        std::string segments;
        for (const Segment& segment : value) {
            segments += (segments.empty() ? "" : " / ") + text(segment.center) + '|' +
                        text(segment.center_frequency) + '|' + text(segment.channels);
        }
        return segments;
    } else if constexpr (std::ranges::range<decltype(value)>) {
        std::ostringstream os;
        const char* separator = "";
        for (const int number : numbers(value)) {
            os << std::exchange(separator, " ") << number;
        }
        return os.str();
    } else {
        return text(std::array{value});
    }
}

std::string answer(std::istream& is) {
    std::string word;
    Region region{};
    is >> word;
    string_to_enum(word, region);
    is >> word;
    if (word == "classes") {
        return text(get_all_region_opclasses(region));
    }
    if (word == "info") {
        const ChannelInfo info = test::read_channel_info(is);
        try {
            const auto opclasses = get_opclasses_from_channel_info(info, region);
            EXPECT_TRUE(opclass_deducible_from_channel_info(info, region));
            return text(opclasses);
        } catch (const std::logic_error& error) {
            EXPECT_FALSE(opclass_deducible_from_channel_info(info, region));
            return test::without_info(error.what(), info);
        }
    }
    if (word == "primaries") {
        ChannelCapabilityBits bits;
        is >> bits;
        return std::to_string(get_primary_frequencies_with_capabilities(bits, region).size());
    }
    std::vector<int> arguments((std::istream_iterator<int>(is)), {});
    const auto opclass = static_cast<std::uint8_t>(arguments.back());
    const auto channel = static_cast<std::uint8_t>(arguments.front());
    if (word == "class") {
        const auto table = rows(region);
        const auto row = *std::ranges::find(table, opclass, &OpclassDefinition::opclass);
        return text(row.starting_frequency) + ' ' + text(row.channel_spacing) + ' ' +
               text(row.behaviors) + '|' + text(row.channels) + '|' + text(row.center_channels);
    }
    return word == "channel_frequency" ? text(get_channel_frequency(channel, opclass, region))
           : word == "channel_from_frequency"
               ? text(get_channel_from_frequency(KiloHertz{arguments[0]}, opclass, region))
           : word == "segments" ? text(get_segments(channel, opclass, region))
           : word == "segment_centers"
               ? text(get_segment_center_frequencies(channel, opclass, region))
           : word == "segment_channels"
               ? text(get_segment_opclass_channels(channel, opclass, region))
           : word == "definition"
               ? text(get_opclass_definition_channel_frequencies(opclass, region))
           : word == "centers"      ? text(get_opclass_center_frequencies(opclass, region))
           : word == "capabilities" ? get_channel_capabilities(opclass, region).to_string()
           : word == "secondary"    ? text(is_secondary_segment(opclass, region))
                                    : "no such operation";
}

TEST(OperatingClassDeduction, AnswersAsListed) {
    const auto cases = test::listed_cases("operating_classes.tsv");
    EXPECT_GT(cases.size(), 100U);
    for (const auto& [call, expected] : cases) {
        std::istringstream is(call);
        EXPECT_EQ(message_of<std::logic_error>([&] { return answer(is); }), expected) << call;
    }
}

TEST(OperatingClassDeduction, Class124IsAbsentAndItsChannelsAreIn125) {
    EXPECT_FALSE(get_all_region_opclasses(Region::GLOBAL).contains(124));
    EXPECT_EQ(numbers(get_all_opclass_channels(125, Region::GLOBAL)),
              (Numbers{149, 153, 157, 161, 165, 169, 173, 177}));
}

TEST(OperatingClassDeduction, EveryChannelOfEveryClassLeadsToItsFrequencyAndBackToTheClass) {
    for (const Region region : regions) {
        const auto table = rows(region);
        for (const OpclassDefinition& row : table) {
            const ChannelWidth width = width_of(row);
            for (const auto& list : {row.channels, row.center_channels}) {
                for (const std::uint8_t channel : list) {
                    const auto frequency = get_channel_frequency(channel, row.opclass, region);
                    EXPECT_EQ(get_channel_from_frequency(frequency, row.opclass, region), channel);
                    for (int other = 0; other < 256; ++other) {
                        const auto asked = static_cast<ChannelWidth>(other);
                        const auto found = get_opclass(asked, frequency, row.behaviors, region);
                        const bool fits = asked == width && width != ChannelWidth::INVALID;
                        if (!fits) {
                            EXPECT_NE(found, row.opclass);
                            continue;
                        }
                        // Where Europe's classes overlap, the first one in the table counts.
                        const int expected =
                            region == Region::EUROPE && row.opclass == 16 ? 3 : row.opclass;
                        const bool its = region == Region::EUROPE && row.opclass == 17 &&
                                         table.end() != std::ranges::find_if(table, [&](auto& r) {
                                             return r.opclass == 15 && r.channels.contains(channel);
                                         });
                        EXPECT_EQ(found, its ? 15 : expected) << int{channel};
                    }
                }
            }
            for (const std::uint8_t channel : row.channels) {
                const auto frequency = get_channel_frequency(channel, row.opclass, region);
                const bool sided = row.behaviors.contains(Behavior::PRIMARY_LOWER) ||
                                   row.behaviors.contains(Behavior::PRIMARY_UPPER);
                EXPECT_EQ(get_opclass(width, frequency, {}, region) == 0,
                          sided || width == ChannelWidth::INVALID);
            }
            EXPECT_EQ(behaviors_from_channel_capabilities(
                          get_channel_capabilities(row.opclass, region), region),
                      row.behaviors);
        }
    }
}

TEST(OperatingClassDeduction, AChannelLiesInOneSegmentAndInTwoWhere320MHzOverlap) {
    for (const Region region : regions) {
        for (const OpclassDefinition& row : rows(region)) {
            for (const std::uint8_t channel : row.channels) {
                const bool in_two = row.opclass == 137 && channel >= 33 && channel <= 189;
                EXPECT_EQ(get_segment_center_frequencies(channel, row.opclass, region).size(),
                          in_two ? 2U : 1U)
                    << int{row.opclass};
                if (!in_two) {
                    EXPECT_TRUE(get_segment_opclass_channels(channel, row.opclass, region)
                                    .contains(channel));
                }
            }
        }
    }
}

TEST(OperatingClassDeduction, A40MHzClassWithoutCentersMustTellWhereThePrimaryChannelLies) {
    const OpclassLookup odd({{200, KiloHertz{5000000}, MegaHertz{40}, {36}, {}, {}}});
    EXPECT_EQ(message_of<std::invalid_argument>(
                  [&] { return odd.get_segment_center_frequencies(36, 200), ""; }),
              "Provided opclass 200 has no primary channel behavior definition!");
}

TEST(OperatingClassDeduction, EveryFunctionRefusesRegionsWithoutTableBeforeAnythingElse) {
    const ChannelInfo never_set;
    std::ostringstream os;
    const std::function<void(Region)> functions[] = {
        [](Region r) { get_channel_frequency(1, 0, r); },
        [](Region r) { get_channel_from_frequency({}, 0, r); },
        [](Region r) { get_segments(1, 0, r); },
        [](Region r) { get_segment_center_frequencies(1, 0, r); },
        [](Region r) { get_opclass_center_frequencies(0, r); },
        [](Region r) { get_opclass_definition_channel_frequencies(0, r); },
        [](Region r) { get_channel_capabilities(0, r); },
        [](Region r) { get_all_opclass_channels(0, r); },
        [](Region r) { get_segment_opclass_channels(1, 0, r); },
        [](Region r) { get_all_region_opclasses(r); },
        [](Region r) { is_secondary_segment(0, r); },
        [](Region r) { get_opclass({}, {}, {}, r); },
        [](Region r) { behaviors_from_channel_capabilities({}, r); },
        [&](Region r) { behaviors_from_channel_info(never_set, r); },
        [&](Region r) { opclass_deducible_from_channel_info(never_set, r); },
        [](Region r) { opclass_deducible_from_channel_entry({}, r); },
        [](Region r) { get_opclasses({}, r); },
        [](Region r) { get_primary_frequencies_with_capabilities({}, r); },
        [&](Region r) { print_lookup_table(os, r); },
        [&](Region r) { get_opclasses_from_channel_info(never_set, r); },
    };
    test::expect_texts<Region>(
        {"USA|EUROPE|JAPAN|GLOBAL|CHINA", "unknown region value ", test::Number::APPENDED});
    for (int number = 0; number < 256; ++number) {
        const bool known = number < 5;
        const auto region = static_cast<Region>(number);
        if (number == 1 || number == 3) {
            continue;
        }
        for (const auto& function : functions) {
            const bool names_region = &function == std::end(functions) - 1;
            EXPECT_EQ(message_of<std::invalid_argument>([&] { return function(region), ""; }),
                      !known         ? "Unknown region."
                      : names_region ? enum_to_string(region) + " not implemented yet."
                                     : "Not implemented yet.");
        }
    }
    EXPECT_EQ(os.str(), "");
}

TEST(OperatingClassDeduction, ListsSupportTheClassesTheirChannelsAreCapableOf) {
    const ChannelList list({entry(1, 2412000, 0x101), entry(36, 5180000, 0x103),
                            entry(60, 5300000, 0x0), entry(149, 5745000, 0x017),
                            entry(37, 6135000, 0x22F)});
    EXPECT_EQ(numbers(get_opclasses(list, Region::GLOBAL)),
              (Numbers{81, 115, 116, 125, 128, 130, 131, 132, 133, 134, 137}));
    EXPECT_EQ(numbers(get_opclasses(list, Region::EUROPE)), (Numbers{1, 4, 5, 17, 128, 130}));
    EXPECT_TRUE(opclass_deducible_from_channel_entry(entry(2, 5935000, 0), Region::GLOBAL));
    EXPECT_FALSE(opclass_deducible_from_channel_entry(entry(1, 58320000, 0), Region::GLOBAL));
}

TEST(OperatingClassDeduction, PrintsItsTableForPeople) {
    std::ostringstream os;
    const OpclassLookup lookup(
        {{128, KiloHertz{5000000}, MegaHertz{80}, {36, 40, 44, 48}, {42}, {}},
         {5, KiloHertz{5000000}, MegaHertz{40}, {36}, {}, {Behavior{2}}}});
    lookup.print_lookup_table(os);
    EXPECT_EQ(os.str(),
              "Full lookup table:\n"
              "Channel Width: 40 MHz\n"
              "  Opclass: 5, Channel List: [36], Freq Ranges: [5170-5210], Behavior: [2]\n"
              "Channel Width: 80 MHz\n"
              "  Opclass: 128, Channel List: [36, 40, 44, 48], Freq Ranges: [5170-5250], "
              "Behavior: []\n");
}

}  // namespace
}  // namespace nuv::OperatingClassDeduction
