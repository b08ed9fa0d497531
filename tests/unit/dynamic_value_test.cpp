// SPDX-License-Identifier: Apache-2.0
#include "nuv/dynamic_value.hpp"

#include "tests/support/channels.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::test {

/// The time stamp of 20 dBm set at `ours` after `value` of the time `theirs` was reported.
template <class Strategy>
std::string updated(float value, std::int64_t theirs, std::int64_t ours) {
    DynamicValue<float, Strategy> field(20, ours);
    const bool took = field.update({value, theirs});
    EXPECT_EQ(std::isnan(field.get()) || field.get() == value, took || value == 20);
    return field.is_set() ? std::to_string(field.get_timestamp()) : "-";
}

TEST(DynamicValue, StrategyAndTimeDecideWhichSourceWins) {
    const auto time = [](const std::string& text) { return text == "-" ? NEVER : std::stoi(text); };
    for (const auto& [call, expected] : listed_cases("dynamic_values.tsv")) {
        std::istringstream is(call);
        std::string value, theirs, ours;
        is >> value >> theirs >> ours;
        const std::tuple report(std::stof(value), time(theirs), time(ours));
        EXPECT_EQ(std::apply(updated<LastChangedStrategy>, report) + ' ' +
                      std::apply(updated<LastUpdatedStrategy>, report) + ' ' +
                      std::apply(updated<SetOnceStrategy>, report),
                  expected)
            << call;
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
