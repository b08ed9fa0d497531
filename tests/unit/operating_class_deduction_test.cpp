// SPDX-License-Identifier: Apache-2.0
#include "nuv/operating_class_deduction.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>

#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/frequency_conversion.hpp"
#include "tests/support/json_text.hpp"

namespace nuv::OperatingClassDeduction {
namespace {

using test::message_of;
using Numbers = std::vector<int>;

constexpr Region regions[] = {Region::EUROPE, Region::GLOBAL};

Numbers numbers(const auto& list) {
    Numbers result;
    for (const auto element : list) {
        if constexpr (std::same_as<std::remove_cv_t<decltype(element)>, KiloHertz>) {
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

ChannelInfo info(int primary, int center, ChannelWidth width, int secondary = 0) {
    return {{KiloHertz{primary}, 1}, {{KiloHertz{center}, width, 0}, 1}, KiloHertz{secondary}, {}};
}

ChannelEntry entry(std::uint8_t channel, int frequency, unsigned capabilities) {
    return {channel, KiloHertz{frequency}, capabilities, {}, {}, {}, {}, {}};
}

TEST(OperatingClassDeduction, TablesAreThoseOfAnnexE) {
    struct Row {
        int opclass, start, spacing;
        Numbers behavior;
        std::size_t count;  // of the channels
        int first, last;
        Numbers centers;  // how many, first, last
    };
    const Row wide[] = {{128, 5000000, 80, {}, 28, 36, 177, {7, 42, 171}},
                        {129, 5000000, 160, {}, 24, 36, 177, {3, 50, 163}},
                        {130, 5000000, 80, {0}, 28, 36, 177, {7, 42, 171}}};
    std::vector<Row> global = {
        {81, 2407000, 25, {}, 13, 1, 13, {}},
        {82, 2414000, 25, {}, 1, 14, 14, {}},
        {83, 2407000, 40, {2}, 9, 1, 9, {}},
        {84, 2407000, 40, {3}, 9, 5, 13, {}},
        {115, 5000000, 20, {}, 4, 36, 48, {}},
        {116, 5000000, 40, {2}, 2, 36, 44, {}},
        {117, 5000000, 40, {3}, 2, 40, 48, {}},
        {118, 5000000, 20, {}, 4, 52, 64, {}},
        {119, 5000000, 40, {2}, 2, 52, 60, {}},
        {120, 5000000, 40, {3}, 2, 56, 64, {}},
        {121, 5000000, 20, {}, 12, 100, 144, {}},
        {122, 5000000, 40, {2}, 6, 100, 140, {}},
        {123, 5000000, 40, {3}, 6, 104, 144, {}},
        {125, 5000000, 20, {}, 8, 149, 177, {}},
        {126, 5000000, 40, {2}, 4, 149, 173, {}},
        {127, 5000000, 40, {3}, 4, 153, 177, {}},
        {131, 5950000, 20, {}, 59, 1, 233, {}},
        {132, 5950000, 40, {}, 58, 1, 229, {29, 3, 227}},
        {133, 5950000, 80, {}, 56, 1, 221, {14, 7, 215}},
        {134, 5950000, 160, {}, 56, 1, 221, {7, 15, 207}},
        {135, 5950000, 80, {0}, 56, 1, 221, {14, 7, 215}},
        {136, 5925000, 20, {}, 1, 2, 2, {}},
        {137, 5950000, 320, {}, 56, 1, 221, {6, 31, 191}},
        {180, 56160000, 2160, {}, 6, 1, 6, {}},
    };
    std::vector<Row> europe = {
        {1, 5000000, 20, {}, 4, 36, 48, {}},     {2, 5000000, 20, {}, 4, 52, 64, {}},
        {3, 5000000, 20, {}, 11, 100, 140, {}},  {4, 2407000, 25, {}, 13, 1, 13, {}},
        {5, 5000000, 40, {2}, 2, 36, 44, {}},    {6, 5000000, 40, {2}, 2, 52, 60, {}},
        {7, 5000000, 40, {2}, 5, 100, 132, {}},  {8, 5000000, 40, {3}, 2, 40, 48, {}},
        {9, 5000000, 40, {3}, 2, 56, 64, {}},    {10, 5000000, 40, {3}, 5, 104, 136, {}},
        {11, 2407000, 40, {2}, 9, 1, 9, {}},     {12, 2407000, 40, {3}, 9, 5, 13, {}},
        {13, 5002500, 5, {}, 14, 171, 184, {}},  {14, 5000000, 10, {}, 14, 171, 184, {}},
        {15, 5000000, 20, {}, 12, 172, 183, {}}, {16, 5000000, 20, {}, 11, 100, 140, {}},
        {17, 5000000, 20, {}, 6, 149, 169, {}},  {18, 56160000, 2160, {}, 6, 1, 6, {}},
    };
    global.insert(global.end(), std::begin(wide), std::end(wide));
    europe.insert(europe.end(), std::begin(wide), std::end(wide));
    for (const Region region : regions) {
        const auto& expected = region == Region::GLOBAL ? global : europe;
        const auto table = rows(region);
        EXPECT_EQ(table.size(), expected.size());
        for (const Row& row : expected) {
            const auto found = std::ranges::find(table, row.opclass, &OpclassDefinition::opclass);
            ASSERT_NE(found, table.end()) << row.opclass;
            const Numbers channels = numbers(found->channels);
            const Numbers centers = numbers(found->center_channels);
            EXPECT_EQ(found->starting_frequency.count(), row.start) << row.opclass;
            EXPECT_EQ(found->channel_spacing.count(), row.spacing) << row.opclass;
            EXPECT_EQ(numbers(found->behaviors), row.behavior) << row.opclass;
            EXPECT_EQ(channels.size(), row.count) << row.opclass;
            EXPECT_EQ(channels.front(), row.first) << row.opclass;
            EXPECT_EQ(channels.back(), row.last) << row.opclass;
            EXPECT_EQ(centers.empty() ? Numbers{}
                                      : (Numbers{static_cast<int>(centers.size()), centers.front(),
                                                 centers.back()}),
                      row.centers)
                << row.opclass;
        }
    }
    EXPECT_EQ(numbers(get_all_region_opclasses(Region::EUROPE)).front(), 1);
    EXPECT_EQ(get_all_region_opclasses(Region::GLOBAL).size(), 27U);
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
            EXPECT_EQ(is_secondary_segment(row.opclass, region),
                      row.opclass == 130 || row.opclass == 135);
        }
    }
}

TEST(OperatingClassDeduction, EveryChannelLiesInItsSegments) {
    for (const Region region : regions) {
        for (const OpclassDefinition& row : rows(region)) {
            const int width = row.channel_spacing.count();
            const int half = width >= 40 && width <= 320 ? width * 500 - 10000 : 0;
            ChannelSet covered;
            for (const std::uint8_t channel : row.channels) {
                const auto frequency = get_channel_frequency(channel, row.opclass, region);
                const auto centers = get_segment_center_frequencies(channel, row.opclass, region);
                const bool in_two = row.opclass == 137 && channel >= 33 && channel <= 189;
                ASSERT_EQ(centers.size(), in_two ? 2U : 1U) << int{row.opclass};
                for (const KiloHertz center : centers) {
                    EXPECT_LE(std::abs((center - frequency).count()), half) << int{row.opclass};
                    EXPECT_TRUE(std::ranges::count(
                        get_opclass_center_frequencies(row.opclass, region), center));
                }
                const auto segment = [&] {
                    return numbers(get_segment_opclass_channels(channel, row.opclass, region));
                };
                if (in_two) {
                    EXPECT_EQ(message_of<std::invalid_argument>([&] { return segment(), ""; }),
                              "No single segment for provided opclass 137 and channel " +
                                  std::to_string(channel) + " is not valid!");
                    continue;
                }
                const Numbers channels = segment();
                EXPECT_EQ(channels.size(), half == 0 ? 1U : static_cast<unsigned>(width) / 20);
                EXPECT_TRUE(std::ranges::count(channels, channel));
                EXPECT_EQ(
                    (channels.front() + channels.back()) * 5000 / 2,
                    width < 2160 ? (centers[0] - row.starting_frequency).count() : channel * 5000);
            }
        }
    }
    EXPECT_EQ(numbers(get_segment_center_frequencies(33, 137, Region::GLOBAL)),
              (Numbers{6105000, 6265000}));
    EXPECT_EQ(numbers(get_segment_center_frequencies(63, 137, Region::GLOBAL)), Numbers{6265000});
    EXPECT_EQ(numbers(get_segment_opclass_channels(5, 83, Region::GLOBAL)), (Numbers{5, 9}));
    EXPECT_EQ(numbers(get_segment_opclass_channels(165, 128, Region::GLOBAL)),
              (Numbers{165, 169, 173, 177}));
}

TEST(OperatingClassDeduction, ListsTheFrequenciesOfAClass) {
    const auto definition = [](std::uint8_t opclass) {
        return numbers(get_opclass_definition_channel_frequencies(opclass, Region::GLOBAL));
    };
    const auto centers = [](std::uint8_t opclass) {
        return numbers(get_opclass_center_frequencies(opclass, Region::GLOBAL));
    };
    EXPECT_EQ(definition(116), (Numbers{5180000, 5220000}));
    EXPECT_EQ(centers(116), (Numbers{5190000, 5230000}));
    EXPECT_EQ(centers(117), (Numbers{5190000, 5230000}));
    EXPECT_EQ(definition(129), (Numbers{5250000, 5570000, 5815000}));
    EXPECT_EQ(centers(129), definition(129));
    EXPECT_EQ(definition(82), Numbers{2484000});
    EXPECT_EQ(centers(82), Numbers{2484000});
    EXPECT_EQ(get_channel_frequency(6, 180, Region::GLOBAL).count(), 69120000);
    EXPECT_EQ(get_channel_frequency(2, 136, Region::GLOBAL).count(), 5935000);
    EXPECT_EQ(get_channel_frequency(255, 115, Region::GLOBAL).count(), 6275000);
}

TEST(OperatingClassDeduction, RefusesWhatAClassDoesNotHave) {
    // A 40 MHz class without centres must tell where the primary channel lies.
    const OpclassLookup odd({{200, KiloHertz{5000000}, MegaHertz{40}, {36}, {}, {}}});
    const auto& global = get_channel_opclasses_global();
    const struct {
        std::function<void()> call;
        std::string text;
    } table[] = {
        {[&] { global.get_channel_frequency(1, 124); }, "Provided opclass 124 not valid!"},
        {[&] { global.is_secondary_segment(0); }, "Provided opclass 0 not valid!"},
        {[&] { global.get_channel_from_frequency(KiloHertz{5181000}, 115); },
         "Provided freq 5181000 and opclass 115 is not valid!"},
        {[&] { global.get_channel_from_frequency(KiloHertz{5260000}, 115); },
         "Provided freq 5260000 and opclass 115 is not valid!"},
        {[&] { global.get_channel_from_frequency(KiloHertz{-2147483647}, 180); },
         "Provided freq -2147483647 and opclass 180 is not valid!"},
        {[&] { global.get_segment_center_frequencies(233, 134); },
         "No single segment for provided opclass 134 and channel 233 is not valid!"},
        {[&] { global.get_segment_opclass_channels(40, 116); },
         "No single segment for provided opclass 116 and channel 40 is not valid!"},
        {[&] { odd.get_segment_center_frequencies(36, 200); },
         "Provided opclass 200 has no primary channel behavior definition!"},
    };
    for (const auto& [call, text] : table) {
        EXPECT_EQ(message_of<std::invalid_argument>([&] { return call(), ""; }), text);
    }
}

TEST(OperatingClassDeduction, EveryFunctionRefusesRegionsWithoutTableBeforeAnythingElse) {
    const ChannelInfo never_set;
    std::ostringstream os;
    const std::function<void(Region)> functions[] = {
        [](Region r) { get_channel_frequency(1, 0, r); },
        [](Region r) { get_channel_from_frequency({}, 0, r); },
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
    const std::string texts[] = {"USA", "", "JAPAN", "", "CHINA"};
    for (int number = 0; number < 256; ++number) {
        const bool known = number < 5;
        const auto region = static_cast<Region>(number);
        EXPECT_EQ(enum_to_string(region), number == 1   ? "EUROPE"
                                          : number == 3 ? "GLOBAL"
                                          : known
                                              ? texts[number]
                                              : "unknown region value " + std::to_string(number));
        if (number == 1 || number == 3) {
            continue;
        }
        for (const auto& function : functions) {
            const bool names_region = &function == std::end(functions) - 1;
            EXPECT_EQ(message_of<std::invalid_argument>([&] { return function(region), ""; }),
                      !known         ? "Unknown region."
                      : names_region ? texts[number] + " not implemented yet."
                                     : "Not implemented yet.");
        }
    }
    EXPECT_EQ(os.str(), "");
}

TEST(OperatingClassDeduction, DeducesTheClassesOfAChannelInfo) {
    using enum ChannelWidth;
    const struct {
        ChannelInfo info;
        Numbers global, europe;
    } table[] = {
        {ChannelInfo({KiloHertz{2484000}, 1}, {}), {82}, {}},
        {ChannelInfo({KiloHertz{5180000}, 1}, {}, {}, {}), {115}, {1}},  // no segment
        {info(2412000, 2422000, HT40), {83}, {11}},
        {info(2472000, 2462000, HT40), {84}, {12}},
        {info(5180000, 5190000, HT40), {116}, {5}},
        {info(5200000, 5190000, HT40), {117}, {8}},
        {info(5180000, 5180000, HT40), {}, {}},
        {info(5955000, 5965000, HT40), {132}, {}},
        {info(5180000, 5210000, HT80), {128}, {128}},
        {info(5660000, 5570000, HT160), {}, {}},
        {info(5975000, 6105000, HT320), {137}, {}},
        {info(5935000, 5935000, HT20), {136}, {}},
        {info(5180000, 5210000, HT8080, 5775000), {128, 130}, {128, 130}},
        {info(5955000, 5985000, HT8080, 6385000), {133, 135}, {}},
        {info(5180000, 5210000, INVALID), {}, {}},
    };
    for (const auto& [channel, global, europe] : table) {
        for (const Region region : regions) {
            const auto& expected = region == Region::GLOBAL ? global : europe;
            EXPECT_EQ(opclass_deducible_from_channel_info(channel, region), !expected.empty());
            if (!expected.empty()) {
                EXPECT_EQ(numbers(get_opclasses_from_channel_info(channel, region)), expected);
            }
        }
    }
}

TEST(OperatingClassDeduction, NamesTheSegmentThatHasNoClass) {
    const std::pair<ChannelInfo, std::string> table[] = {
        {{}, "Channel info has no primary frequency set"},
        {info(5185000, 5210000, ChannelWidth::HT80),
         "No mapping available for primary segment of channel info "},
        {info(5185000, 5210000, ChannelWidth::HT8080, 5),
         "No mapping available for primary segment of channel info "},
        {info(5180000, 5210000, ChannelWidth::HT8080, 5780000 + 100),
         "No mapping available for secondary segment of channel info "},
    };
    for (const auto& [channel, text] : table) {
        std::ostringstream os;
        os << text;
        if (channel.get_primary_frequency().is_set()) {
            os << channel;
        }
        EXPECT_EQ(message_of<std::logic_error>([&, &info = channel] {
                      return get_opclasses_from_channel_info(info, Region::GLOBAL), "";
                  }),
                  os.str());
        EXPECT_FALSE(opclass_deducible_from_channel_info(channel, Region::GLOBAL));
    }
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

TEST(OperatingClassDeduction, FindsPrimaryChannelsByCapabilities) {
    const auto& global = get_channel_opclasses_global();
    const auto primaries = [&](unsigned bits) {
        return numbers(global.get_primary_frequencies_with_capabilities(bits));
    };
    EXPECT_EQ(primaries(0x001).size(), 14U + 28 + 60);
    EXPECT_EQ(primaries(0x0C1), primaries(0x001));     // radar is no matter
    EXPECT_EQ(primaries(0x303).size(), 5U);            // 5 to 9 are lower and upper
    EXPECT_EQ(primaries(0x102).size(), 9U + 14 + 29);  // the lower channel of each 40 MHz segment
    EXPECT_EQ(primaries(0x020).size(), 56U);
    EXPECT_EQ(primaries(0x018).size(), 24U + 56);
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
