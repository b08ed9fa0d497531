// SPDX-License-Identifier: Apache-2.0
#include "nuv/dynamic_value.hpp"

#include <cmath>

#include "tests/support/channels.hpp"

namespace nuv::test {

/// The time stamp of 20 dBm set at `ours` after `value` of the time `theirs` was reported.
template <class Strategy>
std::int64_t updated(float value, std::int64_t theirs, std::int64_t ours) {
    DynamicValue<float, Strategy> field(20, ours);
    const bool took = field.update({value, theirs});
    EXPECT_EQ(std::isnan(field.get()) || field.get() == value, took || value == 20);
    return field.get_timestamp();
}

TEST(DynamicValue, StrategyAndTimeDecideWhichSourceWins) {
    // Value, its stamp and ours; what stamp each of the strategies leaves.
    const std::tuple<float, std::int64_t, std::int64_t, std::array<std::int64_t, 3>> table[] = {
        {20, 0, 1, {1, 1, 1}},
        {23, 0, 1, {1, 1, 1}},
        {20, 1, 1, {1, 1, 1}},
        {23, 1, 1, {1, 1, 1}},
        {20, 2, 1, {1, 2, 1}},
        {23, 2, 1, {2, 2, 1}},
        {20, NEVER, 1, {1, 1, 1}},
        {23, NEVER, 1, {1, 1, 1}},
        {20, 2, NEVER, {2, 2, 2}},
        {23, -5, NEVER, {-5, -5, -5}},
        {std::nanf(""), 2, 1, {2, 2, 1}},
        {20, NEVER, NEVER, {NEVER, NEVER, NEVER}},
    };
    for (const auto& [value, theirs, ours, expected] : table) {
        const std::array stamps{updated<LastChangedStrategy>(value, theirs, ours),
                                updated<LastUpdatedStrategy>(value, theirs, ours),
                                updated<SetOnceStrategy>(value, theirs, ours)};
        EXPECT_EQ(stamps, expected) << value << " of " << theirs << " on " << ours;
    }
}

TEST(DynamicValue, EquivalenceIgnoresTimeButNotWhetherItWasSet) {
    using Field = ChannelEntry::Power;
    EXPECT_TRUE(Field(1, 5).equivalent_to({1, 6}) && Field(1, 5) != Field(1, 6));
    EXPECT_TRUE(Field(1, NEVER).equivalent_to({2, NEVER}));
    EXPECT_FALSE(Field(1, 5).equivalent_to({1, NEVER}) || Field(1, 5).equivalent_to({2, 5}));
    EXPECT_FALSE(Field(std::nanf(""), 5).equivalent_to({std::nanf(""), 5}));
}

}  // namespace nuv::test
