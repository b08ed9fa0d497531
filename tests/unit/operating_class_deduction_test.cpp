// SPDX-License-Identifier: Apache-2.0
#include "nuv/operating_class_deduction.hpp"

#include <ranges>

#include "nuv/frequency_conversion.hpp"
#include "tests/support/channels.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/foreign_locale.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::OperatingClassDeduction {
namespace {

using test::channel;
using test::message_of;

constexpr Region regions[] = {Region::EUROPE, Region::GLOBAL};

/// One number, or several with blanks between; a segment as its members with bars between.
std::string text(const auto& value) {
    if constexpr (std::ranges::range<decltype(value)>) {
        std::string all;
        for (const auto& element : value) {
            all += (all.empty() ? "" : " ") + text(element);
        }
        return all;
    } else if constexpr (requires { value.center_frequency; }) {
        return text(value.center) + '|' + text(value.center_frequency) + '|' + text(value.channels);
    } else if constexpr (requires { value.count(); }) {
        return std::to_string(value.count());
    } else {
        return std::to_string(static_cast<int>(value));
    }
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

/// What stands behind an operation: a class, or a channel or frequency and a class, or else.
struct Arguments {
    explicit Arguments(const std::string& text) : is(text) {
        std::istringstream numbers(text);
        int last = 0;
        numbers >> frequency;
        channel = static_cast<std::uint8_t>(frequency);
        opclass = numbers >> last ? static_cast<std::uint8_t>(last) : channel;
    }
    std::istringstream is;
    int frequency = 0;
    std::uint8_t channel, opclass;
};

std::string of_class(std::uint8_t opclass, Region region) {
    const std::string channels = text(get_all_opclass_channels(opclass, region));
    const auto table = rows(region);
    const auto row = *std::ranges::find(table, opclass, &OpclassDefinition::opclass);
    return text(row.starting_frequency) + ' ' + text(row.channel_spacing) + ' ' +
           text(row.behaviors) + '|' + channels + '|' + text(row.center_channels);
}

std::string of_info(const ChannelInfo& info, Region region) {
    const std::string found = message_of<std::logic_error>(
        [&] { return text(get_opclasses_from_channel_info(info, region)); });
    EXPECT_EQ(opclass_deducible_from_channel_info(info, region), found.size() < 8) << found;
    return test::without_info(found, info);
}

std::string of_primaries(std::istream& is, Region region) {
    ChannelCapabilityBits bits;
    is >> bits;
    return text(get_primary_frequencies_with_capabilities(bits, region).size());
}

using Operation = std::string (*)(Arguments& a, Region r);
const std::map<std::string, Operation> operations{
    {"classes", [](auto&, auto r) { return text(get_all_region_opclasses(r)); }},
    {"class", [](auto& a, auto r) { return of_class(a.opclass, r); }},
    {"info", [](auto& a, auto r) { return of_info(test::read_channel_info(a.is), r); }},
    {"primaries", [](auto& a, auto r) { return of_primaries(a.is, r); }},
    {"frequency",
     [](auto& a, auto r) { return text(get_channel_frequency(a.channel, a.opclass, r)); }},
    {"channel",
     [](auto& a, auto r) {
         return text(get_channel_from_frequency(KiloHertz{a.frequency}, a.opclass, r));
     }},
    {"segments", [](auto& a, auto r) { return text(get_segments(a.channel, a.opclass, r)); }},
    {"segment_centers",
     [](auto& a, auto r) { return text(get_segment_center_frequencies(a.channel, a.opclass, r)); }},
    {"segment_channels",
     [](auto& a, auto r) { return text(get_segment_opclass_channels(a.channel, a.opclass, r)); }},
    {"definition",
     [](auto& a, auto r) {
         return text(get_opclass_definition_channel_frequencies(a.opclass, r));
     }},
    {"centers", [](auto& a, auto r) { return text(get_opclass_center_frequencies(a.opclass, r)); }},
    {"capabilities",
     [](auto& a, auto r) { return get_channel_capabilities(a.opclass, r).to_string(); }},
    {"secondary", [](auto& a, auto r) { return text(is_secondary_segment(a.opclass, r)); }},
};

TEST(OperatingClassDeduction, AnswersAsListed) {
    for (const auto& [call, expected] : test::listed_cases("operating_classes.tsv")) {
        std::istringstream is(call);
        std::string name, operation, rest;
        std::getline(is >> name >> operation, rest);
        Region region{};
        string_to_enum(name, region);
        Arguments arguments(rest);
        EXPECT_EQ(message_of<std::logic_error>(
                      [&] { return operations.at(operation)(arguments, region); }),
                  expected)
            << call;
    }
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
                    // Where Europe's classes overlap, the first one in the table counts.
                    const bool hidden = region == Region::EUROPE && row.opclass == 17 &&
                                        channel >= 172 && channel <= 183;
                    const int first = region == Region::EUROPE && row.opclass == 16 ? 3
                                      : hidden                                      ? 15
                                                                                    : row.opclass;
                    for (int other = 0; other < 256; ++other) {
                        const auto asked = static_cast<ChannelWidth>(other);
                        const auto found = get_opclass(asked, frequency, row.behaviors, region);
                        if (asked == width && width != ChannelWidth::INVALID) {
                            EXPECT_EQ(found, first) << int{channel};
                        } else {
                            EXPECT_NE(found, row.opclass) << int{channel};
                        }
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

TEST(OperatingClassDeduction, A40MHzClassWithoutCentersMustTellWhereThePrimaryChannelLies) {
    const OpclassLookup odd({{200, KiloHertz{5000000}, MegaHertz{40}, {36}, {}, {}}});
    EXPECT_EQ(
        message_of<std::invalid_argument>([&] { odd.get_segment_center_frequencies(36, 200); }),
        "Provided opclass 200 has no primary channel behavior definition!");
}

TEST(OperatingClassDeduction, EveryFunctionRefusesRegionsWithoutTableBeforeAnythingElse) {
    const ChannelInfo never_set;
    std::ostringstream os;
    for (int number = 0; number < 256; ++number) {
        const auto region = static_cast<Region>(number);
        if (std::ranges::count(regions, region) > 0) {
            continue;
        }
        const std::string refusal = number < 5 ? "Not implemented yet." : "Unknown region.";
        const auto expect = [&](const std::string& text, auto function) {
            EXPECT_EQ(message_of<std::invalid_argument>([&] { function(); }), text) << number;
        };
        for (const auto& row : operations) {
            Arguments none("- -");
            expect(refusal, [&] { row.second(none, region); });
        }
        expect(refusal, [&] { get_opclass({}, {}, {}, region); });
        expect(refusal, [&] { get_opclasses({}, region); });
        expect(refusal, [&] { behaviors_from_channel_capabilities({}, region); });
        expect(refusal, [&] { behaviors_from_channel_info(never_set, region); });
        expect(refusal, [&] { opclass_deducible_from_channel_info(never_set, region); });
        expect(refusal, [&] { opclass_deducible_from_channel_entry({}, region); });
        expect(refusal, [&] { print_lookup_table(os, region); });
        expect(number < 5 ? enum_to_string(region) + " not implemented yet." : refusal,
               [&] { get_opclasses_from_channel_info(never_set, region); });
    }
    EXPECT_EQ(os.str(), "");
}

TEST(OperatingClassDeduction, ListsSupportTheClassesTheirChannelsAreCapableOf) {
    const ChannelList list({channel(1, 2412000, 0x101), channel(36, 5180000, 0x103),
                            channel(60, 5300000, 0x0), channel(149, 5745000, 0x017),
                            channel(37, 6135000, 0x22F)});
    EXPECT_EQ(text(get_opclasses(list, Region::GLOBAL)),
              "81 115 116 125 128 130 131 132 133 134 137");
    EXPECT_EQ(text(get_opclasses(list, Region::EUROPE)), "1 4 5 17 128 130");
    EXPECT_TRUE(opclass_deducible_from_channel_entry(channel(2, 5935000, 0), Region::GLOBAL));
    EXPECT_FALSE(opclass_deducible_from_channel_entry(channel(1, 58320000, 0), Region::GLOBAL));
}

TEST(OperatingClassDeduction, PrintsItsTableForPeople) {
    const test::ForeignLocale foreign;
    std::ostringstream os;
    const OpclassLookup lookup(
        {{128, KiloHertz{5000000}, MegaHertz{80}, {36, 40, 44, 48}, {42}, {}},
         {81, KiloHertz{2407000}, MegaHertz{25}, {1}, {}, {}},
         {5, KiloHertz{5000000}, MegaHertz{40}, {36}, {}, {Behavior{2}}}});
    lookup.print_lookup_table(os);
    EXPECT_EQ(os.str(),
              "Full lookup table:\n"
              "Channel Width: 25 MHz\n"
              "  Opclass: 81, Channel List: [1], Freq Ranges: [2402-2422], Behavior: []\n"
              "Channel Width: 40 MHz\n"
              "  Opclass: 5, Channel List: [36], Freq Ranges: [5170-5210], Behavior: [2]\n"
              "Channel Width: 80 MHz\n"
              "  Opclass: 128, Channel List: [36, 40, 44, 48], Freq Ranges: [5170-5250], "
              "Behavior: []\n");
}

}  // namespace
}  // namespace nuv::OperatingClassDeduction
