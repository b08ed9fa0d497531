// SPDX-License-Identifier: Apache-2.0
// What holds for everything that takes reports of others, tried on random values.
#include "nuv/wlan_radio.hpp"
#include "tests/support/channels.hpp"

namespace nuv::test {
namespace {

/// Values out of few, so that any two are often equal.
class RandomChannels {
public:
    unsigned below(unsigned count) { return static_cast<unsigned>(random_() % count); }

    template <class Field>
    Field field(auto value) {
        return {value, below(4) == 0 ? NEVER : std::int64_t{below(3)}};
    }
    ChannelEntry entry(unsigned frequencies = 2) {
        return {static_cast<std::uint8_t>(below(8) == 0),
                KiloHertz(static_cast<std::int32_t>(below(frequencies))),
                below(4) == 0 ? 3U : 1U,
                field<ChannelEntry::StateFlags>(below(2)),
                field<ChannelEntry::ConfigFlags>(below(2)),
                field<ChannelEntry::Power>(static_cast<float>(below(2))),
                field<ChannelEntry::Measurement>(static_cast<std::uint8_t>(below(2))),
                field<ChannelEntry::Measurement>(static_cast<std::uint8_t>(below(2)))};
    }
    ChannelInfo info() {
        const auto khz = [&] { return KiloHertz(static_cast<std::int32_t>(below(2))); };
        const auto width = below(2) == 0 ? ChannelWidth::HT80 : ChannelWidth::HT8080;
        return {field<ChannelInfo::Frequency>(khz()),
                field<ChannelInfo::Segment>(ChannelSegment{khz(), width, below(2)}), khz(),
                field<ChannelInfo::Power>(static_cast<float>(below(2)))};
    }
    ChannelList list() {
        std::vector<ChannelEntry> entries;
        for (unsigned count = below(4); count > 0; --count) {
            entries.push_back(entry(4));
        }
        return ChannelList(entries, static_cast<ChannelList::UpdateType>(below(3)));
    }
    NSSTable nss() {
        NSSTable table;
        for (std::uint8_t width = 0; width < 6; ++width) {
            table.update_num_streams(static_cast<ChannelWidth>(width),
                                     static_cast<std::uint8_t>(below(8) == 0), false, false);
        }
        return table;
    }
    WLANRadio radio() {
        const MACAddress id({static_cast<std::uint8_t>(below(2)), 0, 0, 0, 0, 0});
        const auto bits = [&] { return below(8) == 0 ? 1U : 0U; };
        return {field<WLANRadio::RadioID>(id), nss(), nss(), bits(), bits(), list()};
    }

private:
    std::mt19937 random_;
};

/// update() changes something exactly when can_update_from() says so, and leaves nothing to do.
/// `unless` names what the class excepts: then nothing changes, whatever is said.
template <class T>
void expect_law(
    auto make, bool (*unless)(const T&, const T&) = [](const T&, const T&) { return false; }) {
    int changed = 0;
    for (int i = 0; i < 20000; ++i) {
        const T ours = make();
        const T theirs = make();
        T after = ours;
        after.update(theirs);
        const bool can = ours.can_update_from(theirs) && !unless(ours, theirs);
        ASSERT_EQ(can, !(after == ours)) << i;
        ASSERT_FALSE(after.can_update_from(theirs) && !unless(after, theirs)) << i;
        changed += can ? 1 : 0;
    }
    EXPECT_TRUE(changed > 1000 && changed < 19900) << changed;
}

bool differ_by_secondary_centers_alone(const ChannelInfo& a, const ChannelInfo& b) {
    return a.get_primary_frequency().equivalent_to(b.get_primary_frequency()) &&
           a.get_primary_segment().equivalent_to(b.get_primary_segment()) &&
           a.get_max_regulatory_power().equivalent_to(b.get_max_regulatory_power()) &&
           a.get_secondary_center_frequency() != b.get_secondary_center_frequency();
}

TEST(UpdateLaws, SomethingChangesExactlyWhenItIsSaid) {
    RandomChannels random;
    expect_law<ChannelEntry>([&] { return random.entry(); });
    expect_law<ChannelInfo>([&] { return random.info(); }, differ_by_secondary_centers_alone);
    expect_law<ChannelList>([&] { return random.list(); });
    expect_law<WLANRadio>([&] { return random.radio(); });
}

TEST(UpdateLaws, MergeAndIntersectAreTheGreaterAndTheSmaller) {
    RandomChannels random;
    for (int i = 0; i < 2000; ++i) {
        const NSSTable a = random.nss();
        const NSSTable b = random.nss();
        EXPECT_EQ(a.merge(a.intersect(b)), a);
        EXPECT_EQ(a.intersect(b) == b, a.merge(b) == a);
    }
}

}  // namespace
}  // namespace nuv::test
