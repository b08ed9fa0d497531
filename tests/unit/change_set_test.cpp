// SPDX-License-Identifier: Apache-2.0
#include "nuv/change_set.hpp"

#include "nuv/aggregate_diffable_data_container.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {

namespace {

using Names = std::unordered_set<std::string>;

/// Members m0 to m31.
struct Category : ChangeSetCategory {
    explicit Category(std::string category_name) : name(std::move(category_name)) {}
    std::string get_category_name() const override { return name; }
    Names resolve_value(const ChangeSetValue& value) const override {
        Names names;
        for (std::size_t i = 0; i < value.get_value().size(); ++i) {
            if (value.get_value()[i]) {
                names.insert('m' + std::to_string(i));
            }
        }
        return names;
    }
    std::string name;
};

const Category radio("radio");
const Category namesake("radio");
const Category bss("bss");

ChangeSetValue bits(unsigned long value) { return ChangeSetValue::Bits(value); }

struct Container : DiffableDataContainer {
    Container(const Category& its_category, unsigned long its_changes)
        : category(its_category), changes(its_changes) {}
    std::unique_ptr<DiffableDataContainer> clone() const override {
        return std::make_unique<Container>(*this);
    }
    void add_to_diff(ChangeSet& set) const override { set.add_change(category, bits(changes)); }

    const Category& category;
    unsigned long changes;
};

}  // namespace

TEST(ChangeSet, AnswersByAddressAndBitAndIgnoresWhatIsUnchangedButInEquality) {
    const ChangeSet none;
    const ChangeSet zero(radio, bits(0));
    const ChangeSet one(radio, bits(1));
    const ChangeSet both(radio, ChangeSetValue::Bits(3));
    const ChangeSet other(namesake, bits(3));
    const ChangeSet mixed{{bss, bits(0x80000000)}, {radio, bits(2)}};
    const ChangeSet turned({{radio, bits(2)}, {bss, bits(0x80000000)}});
    const ChangeSet twice({{radio, bits(2)}, {radio, bits(1)}});
    const ChangeSet* sets[] = {&none, &zero, &one, &both, &other, &mixed, &turned, &twice};
    // A row and a column for each: s subset of or equal, a any of, e equal.
    const char* const table[][8] = {
        {"se", "s", "s", "s", "s", "s", "s", "s"}, {"s", "se", "s", "s", "s", "s", "s", "s"},
        {"", "", "sae", "sa", "", "", "", "sa"},   {"", "", "a", "sae", "", "a", "a", "a"},
        {"", "", "", "", "sae", "", "", ""},       {"", "", "", "a", "", "sae", "sae", "a"},
        {"", "", "", "a", "", "sae", "sae", "a"},  {"", "", "a", "sa", "", "a", "a", "sae"},
    };
    for (std::size_t i = 0; i < std::size(sets); ++i) {
        EXPECT_EQ(sets[i]->empty(), i < 2);
        for (std::size_t j = 0; j < std::size(sets); ++j) {
            std::string answers = sets[i]->is_subset_of_or_equal_to(*sets[j]) ? "s" : "";
            answers += sets[i]->any_of(*sets[j]) ? "a" : "";
            answers += sets[i]->is_equal_to(*sets[j]) ? "e" : "";
            EXPECT_EQ(answers, table[i][j]) << i << ' ' << j;
        }
    }
}

TEST(ChangeSet, TakesACategoryOnceAndFindsItAgain) {
    ChangeSet set;
    set.get_or_add_change(radio);
    EXPECT_TRUE(set.empty());
    for (const auto add : {+[](ChangeSet& s) { s.add_change(radio, bits(1)); },
                           +[](ChangeSet& s) {
                               s.add_change({radio, bits(1)});
                           }}) {
        EXPECT_EQ(message_of<std::logic_error>([&] { add(set); }),
                  "Trying to add change for category radio but it already already exists in the "
                  "ChangeSet");
    }
    set.add_change(namesake, bits(2));
    set.add_change({bss, bits(4)});
    set.get_or_add_change(radio).set_value(8);
    EXPECT_EQ(&set.get_or_add_change(radio), &set.get_changes().front().second);
    EXPECT_TRUE(
        set.is_equal_to(ChangeSet({{bss, bits(4)}, {radio, bits(8)}, {namesake, bits(2)}})));
    EXPECT_EQ(&set.get_changes().back().first.get(), &bss);
    set.clear();
    EXPECT_TRUE(set.get_changes().empty());
    static_assert(std::is_nothrow_constructible_v<ChangeSet, const Category&, ChangeSetValue>);
    static_assert(
        std::is_nothrow_constructible_v<ChangeSet, const Category&, ChangeSetValue::Bits>);
}

TEST(ChangeSet, NamesChangedMembers) {
    const ChangeSet set({{radio, bits(5)}, {bss, bits(0x80000001)}, {namesake, bits(0)}});
    EXPECT_EQ(set.get_changed_members(false), (Names{"m0", "m2", "m31"}));
    EXPECT_EQ(set.get_changed_members(true), (Names{"radio_m0", "radio_m2", "bss_m0", "bss_m31"}));
    EXPECT_EQ(radio.member_resolution(bits(0), true), Names());
}

TEST(AggregateDiffableDataContainer, AddsUpItsChildrenAndClonesThem) {
    auto inner = std::make_unique<AggregateDiffableDataContainer>();
    inner->add_child(std::make_unique<Container>(bss, 4));
    auto radio_data = std::make_unique<Container>(radio, 1);
    Container& changing = *radio_data;
    AggregateDiffableDataContainer all;
    all.add_child(std::move(radio_data));
    all.add_child(std::move(inner));
    const ChangeSet before({{radio, bits(1)}, {bss, bits(4)}});
    EXPECT_TRUE(all.diff().is_equal_to(before));
    EXPECT_EQ(&all.diff().get_changes().front().first.get(), &radio);

    const auto copy = all.clone();
    changing.changes = 2;
    EXPECT_FALSE(all.diff().is_equal_to(before));
    EXPECT_TRUE(copy->diff().is_equal_to(before));

    all.add_child(std::make_unique<Container>(bss, 8));
    EXPECT_THROW(static_cast<void>(all.diff()), std::logic_error);
    EXPECT_EQ(message_of<std::runtime_error>([&] { all.add_child(nullptr); }),
              "Can't add an empty child to AggregateDiffableDataContainer");
}

}  // namespace nuv::test
