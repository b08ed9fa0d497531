// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_info.hpp"

#include "nuv/frequency_conversion.hpp"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/channels.hpp"
#include "tests/support/json_text.hpp"

namespace nuv::test {
namespace {

using enum ChannelWidth;

ChannelInfo::Frequency frequency(std::int32_t khz, std::int64_t at = 1) {
    return {KiloHertz{khz}, at};
}

ChannelInfo::Segment segment(std::int32_t khz, ChannelWidth width, std::int64_t at = 1) {
    return {{KiloHertz{khz}, width, {}}, at};
}

TEST(ChannelInfo, SecondaryCentersAloneAreNeverTakenAlthoughItSaysSo) {
    const ChannelInfo other({}, segment(5210000, HT8080), KiloHertz{5775000}, {20, 9});
    ChannelInfo info({}, segment(5210000, HT8080), KiloHertz{5690000}, {20, 1});
    const ChannelInfo before = info;
    EXPECT_TRUE(info.can_update_from(other));
    info.update(other);
    EXPECT_EQ(info, before);
}

TEST(ChannelInfo, PowersThatAreNoNumbersNeverAgreeAlthoughNothingIsLeftToTake) {
    const ChannelInfo other(frequency(5180000, 9), {}, {}, {std::nanf(""), 1});
    ChannelInfo info(frequency(5180000, 1), {}, {}, {std::nanf(""), 1});
    info.update(other);
    EXPECT_TRUE(info.can_update_from(other));
    EXPECT_EQ(info.get_primary_frequency(), frequency(5180000, 1));
}

TEST(ChannelInfo, SettersTakeWhatIsNewerAndDiffers) {
    ChannelInfo info;
    for (const auto& [value, at, expected] : {std::tuple(20, 5, frequency(20, 5)),
                                              {30, 5, frequency(20, 5)},
                                              {30, 4, frequency(20, 5)},
                                              {20, 6, frequency(20, 5)},
                                              {30, 6, frequency(30, 6)}}) {
        info.set_primary_frequency(frequency(value, at));
        info.set_max_regulatory_power({static_cast<float>(value), at});
        EXPECT_EQ(info.get_primary_frequency(), expected);
        EXPECT_EQ(info.get_max_regulatory_power().get_timestamp(), expected.get_timestamp());
    }
}

TEST(ChannelInfo, NewestReportOverwritesAlsoWithOlderValuesAndLogsThem) {
    platform::FakePlatform platform;
    platform.clock().advance(std::chrono::seconds(9));
    ChannelInfo info(frequency(5180000, 3'000'000'000), segment(5210000, HT80, 2'000'000'000), {},
                     {20.5, 1'000'000'000});
    const ChannelInfo other(frequency(5200000, 1'999'999'999),
                            {{KiloHertz{5290000}, HT8080, 0b101}, 1'000'000'000},
                            KiloHertz{5775000}, {23, 4'000'000'000});
    info.update(other);
    EXPECT_EQ(info, other);
    // What was never set un-sets ours; its age is meaningless.
    const ChannelInfo newest(frequency(5200000, 5'000'000'000), {}, {}, {});
    info.update(newest);
    EXPECT_FALSE(info.get_primary_segment().is_set() || info.get_max_regulatory_power().is_set());
    EXPECT_EQ(info.get_secondary_center_frequency(), KiloHertz());
    // Of the same time: no record.
    info.update(
        ChannelInfo(frequency(5300000, 1'999'999'999), segment(1, HT20, 6'000'000'000), {}, {}));
    EXPECT_EQ(info.get_primary_frequency().get(), KiloHertz{5300000});
    EXPECT_EQ(
        platform.log().texts(),
        (std::vector<std::string>{
            "Overwriting primary frequency 5180000 kHz (age 6000 ms) with older value 5200000 kHz "
            "(age 7000 ms).",
            "Overwriting primary segment 5210000 kHz, 80 MHz, 0000000000000000 (age 7000 ms) with "
            "older value 5290000 kHz, 80+80 MHz, 0000000000000101 (age 8000 ms).",
            "Overwriting primary segment 5290000 kHz, 80+80 MHz, 0000000000000101 (age 8000 ms) "
            "with older value 0 kHz, 20 MHz, 0000000000000000 (age -9223372027854 ms).",
            "Overwriting max power 23 (age 5000 ms) with older value 0 (age -9223372027854 ms)."}));
    auto record = platform.log().records().front();
    record.line = 0;
    record.text.clear();
    EXPECT_EQ(record, (platform::FakeLog::Record{2, "default", "channel_info",
                                                 "src/shared/channel_info", "update", 0, 0, ""}));
}

TEST(ChannelInfo, SecondaryCenterIsHeldFor80Plus80Alone) {
    for (std::uint8_t number = 0; number < 7; ++number) {
        const auto width = static_cast<ChannelWidth>(number);
        const ChannelInfo made({}, segment(2, width, 2), KiloHertz{5775000}, {});
        ChannelInfo info({}, segment(1, HT8080), KiloHertz{7}, {});
        info.set_segment(segment(2, width, 2), KiloHertz{5775000});
        info.set_segment(segment(3, HT8080, 2), KiloHertz{8});  // not newer
        EXPECT_EQ(info, made);
        EXPECT_EQ(info.get_secondary_center_frequency().count(), width == HT8080 ? 5775000 : 0);
    }
    // of a segment that was never set, none is told
    EXPECT_NE(to_json(ChannelInfo({}, segment(1, HT8080, NEVER), KiloHertz{2}, {}))
                  .find(R"("secondary_center":null)"),
              std::string::npos);
    ChannelInfo primary(frequency(5180000, 5), {20, 1});
    EXPECT_EQ(primary.get_primary_segment(), segment(5180000, HT20, 5));
    primary.reset();
    EXPECT_EQ(primary, ChannelInfo());
}

TEST(ChannelInfo, WhatIsReadReplacesEverythingAndIsStampedWithTheTime) {
    platform::FakePlatform fake;
    ChannelInfo info(frequency(1, 99), segment(2, HT8080, 99), KiloHertz{3}, {4, 99});
    from_json(R"({"primary_center":5,"channel_width":"80+80 MHz","secondary_center":6,)"
              R"("puncturing_map":3,"max_regulatory_power":20})",
              "", info);
    EXPECT_EQ(info, ChannelInfo({}, {{KiloHertz{5}, HT8080, 3}, 1}, KiloHertz{6}, {20, 1}));
}

std::string center(const ChannelInfo& info, ChannelWidth width) {
    return message_of<std::invalid_argument>(
        [&] { return std::to_string(get_center_frequency_of_subsegment(info, width).count()); });
}

TEST(ChannelInfo, SubsegmentHoldsThePrimaryChannel) {
    constexpr std::int32_t CENTER = 6105000;
    for (const ChannelWidth outer : {HT20, HT40, HT80, HT160, HT8080, HT320}) {
        const std::int32_t span = channel_width_to_frequency(outer).count() * 1000;
        const std::int32_t low = CENTER - span / 2;
        for (const ChannelWidth width : {HT20, HT40, HT80, HT160, HT320}) {
            const std::int32_t step = channel_width_to_frequency(width).count() * 1000;
            for (std::int32_t primary = low + 10000; primary < low + span; primary += 20000) {
                // 160 MHz of a first segment of 80 MHz: that segment's center.
                const std::int32_t expected =
                    step > span ? CENTER : low + (primary - low) / step * step + step / 2;
                EXPECT_EQ(center({frequency(primary), segment(CENTER, outer), {}, {}}, width),
                          width > outer ? "desired segment wider than current segment"
                                        : std::to_string(expected))
                    << outer << ", " << width << " around " << primary;
            }
        }
    }
}

TEST(ChannelInfo, SubsegmentFailuresByName) {
    EXPECT_EQ(center({}, HT20), "primary frequency not set");
    EXPECT_EQ(center({frequency(1), {}, {}, {}}, HT8080), "primary segment not set");
    EXPECT_EQ(center({frequency(1), segment(1, HT8080), {}, {}}, HT8080),
              "not possible to get center for 80+80 bandwidth");
    EXPECT_EQ(center({frequency(1), segment(5, INVALID), {}, {}}, INVALID), "5");
}

}  // namespace
}  // namespace nuv::test
