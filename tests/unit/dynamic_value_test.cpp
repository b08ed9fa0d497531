// SPDX-License-Identifier: Apache-2.0
#include "nuv/dynamic_value.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/channels.hpp"

namespace nuv::test {
namespace {

template <class Strategy>
using Value = DynamicValue<float, Strategy>;

constexpr float NAN_VALUE = std::numeric_limits<float>::quiet_NaN();

/// The stamp after taking over, from 1 or `ours`, a value stamped `theirs`.
template <class Strategy>
std::int64_t stamp_after(float value, std::int64_t theirs, std::int64_t ours = 1) {
    Value<Strategy> field(20, ours);
    const Value<Strategy> other(value, theirs);
    const bool can = field.can_update_from(other);
    EXPECT_EQ(field.update(other), can);
    EXPECT_EQ(std::isnan(field.get()) || field.get() == value, can || value == 20);
    return field.get_timestamp();
}

TEST(DynamicValue, StrategyAndTimeDecideWhichSourceWins) {
    const struct {
        float value;
        std::int64_t theirs, ours;
        std::int64_t changed, updated, once;  // the stamps left
    } table[] = {
        {20, 0, 1, 1, 1, 1},
        {23, 0, 1, 1, 1, 1},
        {20, 1, 1, 1, 1, 1},
        {23, 1, 1, 1, 1, 1},
        {20, 2, 1, 1, 2, 1},
        {23, 2, 1, 2, 2, 1},
        {20, NEVER, 1, 1, 1, 1},
        {23, NEVER, 1, 1, 1, 1},
        {20, 2, NEVER, 2, 2, 2},
        {23, -5, NEVER, -5, -5, -5},
        {NAN_VALUE, 2, 1, 2, 2, 1},
        {NAN_VALUE, 0, 1, 1, 1, 1},
        {20, NEVER, NEVER, NEVER, NEVER, NEVER},
    };
    for (const auto& [value, theirs, ours, changed, updated, once] : table) {
        SCOPED_TRACE(testing::Message() << value << " of " << theirs << " on " << ours);
        EXPECT_EQ(stamp_after<LastChangedStrategy>(value, theirs, ours), changed);
        EXPECT_EQ(stamp_after<LastUpdatedStrategy>(value, theirs, ours), updated);
        EXPECT_EQ(stamp_after<SetOnceStrategy>(value, theirs, ours), once);
    }
}

TEST(DynamicValue, IsSetHereAndNowByTheRuleOfItsStrategy) {
    const auto stamps_of = []<class Strategy>(Value<Strategy> field) {
        TestClock clock(10);
        std::vector<std::int64_t> stamps;
        for (const float value : {0.0F, 0.0F, 5.0F, NAN_VALUE, NAN_VALUE}) {
            field.set(value);
            stamps.push_back(field.get_timestamp());
            ++TestClock::now;
        }
        field.reset();
        EXPECT_EQ(field, Value<Strategy>());
        return stamps;
    };
    using Stamps = std::vector<std::int64_t>;
    EXPECT_EQ(stamps_of(Value<LastChangedStrategy>()), (Stamps{10, 10, 12, 13, 14}));
    EXPECT_EQ(stamps_of(Value<LastUpdatedStrategy>()), (Stamps{10, 11, 12, 13, 14}));
    EXPECT_EQ(stamps_of(Value<SetOnceStrategy>()), (Stamps{10, 10, 10, 10, 10}));
}

TEST(DynamicValue, EquivalenceIgnoresTimeButNotWhetherItWasSet) {
    using Field = Value<LastChangedStrategy>;
    EXPECT_TRUE(Field(1, 5).equivalent_to(Field(1, 6)));
    EXPECT_FALSE(Field(1, 5) == Field(1, 6));
    EXPECT_TRUE(Field(1, NEVER).equivalent_to(Field(2, NEVER)));
    EXPECT_FALSE(Field(1, 5).equivalent_to(Field(1, NEVER)));
    EXPECT_FALSE(Field(1, 5).equivalent_to(Field(2, 5)));
    EXPECT_FALSE(Field(NAN_VALUE, 5).equivalent_to(Field(NAN_VALUE, 5)));
}

}  // namespace
}  // namespace nuv::test
