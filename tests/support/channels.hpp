// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/channel_info.hpp"
#include "nuv/wlan_radio.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {

inline constexpr std::int64_t NEVER = ChannelEntry::Power::NEVER_SET;

/// A channel with these capabilities; the rest was never set.
inline ChannelEntry channel(std::uint8_t number, std::int32_t khz,
                            const ChannelCapabilityBits& capabilities = 1) {
    return {number, KiloHertz{khz}, capabilities, {}, {}, {}, {}, {}};
}

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
void expect_update_law(auto make, auto unless) {
    unsigned changed = 0;
    for (int i = 0; i < 20000; ++i) {
        const T ours = make();
        const T theirs = make();
        T after = ours;
        after.update(theirs);
        const bool can = ours.can_update_from(theirs) && !unless(ours, theirs);
        ASSERT_EQ(can, !(after == ours)) << i;
        ASSERT_FALSE(after.can_update_from(theirs) && !unless(after, theirs)) << i;
        changed += can ? 1U : 0U;
    }
    EXPECT_GT(changed, 1000U);
    EXPECT_LT(changed, 19900U);
}

template <class T>
void expect_update_law(auto make) {
    expect_update_law<T>(make, [](const T&, const T&) { return false; });
}

}  // namespace nuv::test
