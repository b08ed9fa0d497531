// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_list.hpp"

#include <algorithm>
#include <ostream>
#include <string>
#include <utility>

#include "internal/classic_stream.hpp"
#include "internal/log_module.hpp"
#include "nuv/json_serializer.hpp"

namespace nuv {

using serialization::JSONSerializer;
using serialization::SerializationContext;
using serialization::YAJLNode;
using serialization::YAJLStream;

namespace {

constinit impl::LogModule log_module{"channel_list", "src/shared/channel_list"};

bool same_frequency(const ChannelEntry& a, const ChannelEntry& b) {
    return a.get_frequency() == b.get_frequency();
}

/// Walks a sorted list while frequencies are looked up in ascending order.
template <class Iterator>
class Alongside {
public:
    Alongside(Iterator begin, Iterator end) : at_(begin), end_(end) {}

    /// The entry with the frequency of `entry`, or null.
    auto find(const ChannelEntry& entry) -> decltype(&*std::declval<Iterator>()) {
        while (at_ != end_ && *at_ < entry) {
            ++at_;
        }
        return at_ != end_ && same_frequency(*at_, entry) ? &*at_ : nullptr;
    }

private:
    Iterator at_;
    Iterator end_;
};

void normalize(std::vector<ChannelEntry>& channels) {
    std::stable_sort(channels.begin(), channels.end());
    // Seen from behind, the last of several is the first.
    const auto kept = std::unique(channels.rbegin(), channels.rend(), same_frequency);
    channels.erase(channels.begin(), kept.base());
}

template <class Container>
auto find_entry(Container& channels, KiloHertz frequency) -> decltype(channels.data()) {
    const auto at = std::lower_bound(
        channels.begin(), channels.end(), frequency,
        [](const ChannelEntry& entry, KiloHertz wanted) { return entry.get_frequency() < wanted; });
    return at != channels.end() && at->get_frequency() == frequency ? &*at : nullptr;
}

bool equal_pairs(const ChannelList& a, const ChannelList& b, auto equal) {
    const auto& ours = a.get_channels();
    const auto& theirs = b.get_channels();
    return std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(), equal);
}

/// What `band_of` says of the first entry, `none` without one.
template <class Band>
Band common_band(const std::vector<ChannelEntry>& channels, Band (ChannelEntry::*band_of)() const,
                 Band none) {
    if (channels.empty()) {
        return none;
    }
    const Band band = (channels.front().*band_of)();
    const auto shares = [&](const ChannelEntry& entry) { return (entry.*band_of)() == band; };
    if (!std::all_of(channels.begin(), channels.end(), shares)) {
        std::string frequencies;
        for (const ChannelEntry& entry : channels) {
            frequencies.append(" ")
                .append(std::to_string(entry.get_frequency().count()))
                .append(" kHz");
        }
        NUV_LOG(log_module, warn) << "ChannelList covers multiple frequency bands:" << frequencies;
    }
    return band;
}

}  // namespace

ChannelList::ChannelList(std::vector<ChannelEntry> channels, UpdateType update_type)
    : channels_(std::move(channels)), update_type_(update_type) {
    normalize(channels_);
}

const ChannelEntry* ChannelList::get_channel_entry(KiloHertz frequency) const {
    return find_entry(channels_, frequency);
}

ChannelEntry* ChannelList::get_channel_entry(KiloHertz frequency) {
    return find_entry(channels_, frequency);
}

void ChannelList::set_performance_opt_flag(std::uint8_t first_channel, std::uint8_t last_channel,
                                           bool flag) {
    for (ChannelEntry& entry : channels_) {
        if (first_channel <= entry.get_channel() && entry.get_channel() <= last_channel) {
            entry.set_performance_opt(flag);
        }
    }
}

void ChannelList::reset_configuration_flags() {
    for (ChannelEntry& entry : channels_) {
        entry.set_config_flags({});
    }
}

void ChannelList::reset_state_flags() {
    for (ChannelEntry& entry : channels_) {
        entry.set_state_flags({});
    }
}

void ChannelList::reset_state_and_config_flags() {
    reset_state_flags();
    reset_configuration_flags();
}

void ChannelList::set_unset_state_flags_to_default_state() {
    const std::int64_t now = steady_now_ns();
    for (ChannelEntry& entry : channels_) {
        if (!entry.get_state_flags().is_set()) {
            entry.set_state_flags({{}, now});
        }
    }
}

void ChannelList::set_unset_configuration_flags_to_not_penalized() {
    for (ChannelEntry& entry : channels_) {
        if (!entry.get_config_flags().is_set()) {
            entry.set_remote_disturber(false);
        }
    }
}

bool ChannelList::has_common_channel_with(const ChannelList& other) const {
    return std::any_of(channels_.begin(), channels_.end(), [&](const ChannelEntry& entry) {
        return other.get_channel_entry(entry.get_frequency()) != nullptr;
    });
}

bool ChannelList::channel_configuration_equivalent_to(const ChannelList& other) const {
    return equal_pairs(*this, other, [](const ChannelEntry& a, const ChannelEntry& b) {
        return a.get_config_flags().equivalent_to(b.get_config_flags());
    });
}

bool ChannelList::equivalent_to(const ChannelList& other) const {
    return update_type_ == other.update_type_ &&
           equal_pairs(*this, other, [](const ChannelEntry& a, const ChannelEntry& b) {
               return a.equivalent_to(b);
           });
}

DetailedFrequencyBand ChannelList::get_detailed_frequency_band() const {
    return common_band(channels_, &ChannelEntry::get_detailed_frequency_band,
                       DetailedFrequencyBand::INVALID_BAND);
}

FrequencyBand ChannelList::get_frequency_band() const {
    return common_band(channels_, &ChannelEntry::get_frequency_band,
                       FrequencyBand::INVALID_BAND_MAX);
}

bool ChannelList::can_update_from(const ChannelList& other) const {
    // Where the lengths are equal, an entry that a complete report would drop has its counterpart
    // in one that it adds.
    if (other.update_type_ == UpdateType::COMPLETE && channels_.size() != other.channels_.size()) {
        return true;
    }
    Alongside ours(channels_.begin(), channels_.end());
    return std::any_of(other.channels_.begin(), other.channels_.end(),
                       [&](const ChannelEntry& theirs) {
                           const ChannelEntry* entry = ours.find(theirs);
                           return entry == nullptr || entry->can_update_from(theirs);
                       });
}

void ChannelList::update(const ChannelList& other) {
    if (other.update_type_ == UpdateType::COMPLETE) {
        Alongside theirs(other.channels_.begin(), other.channels_.end());
        std::erase_if(channels_,
                      [&](const ChannelEntry& entry) { return theirs.find(entry) == nullptr; });
    }
    std::vector<ChannelEntry> added;
    Alongside ours(channels_.begin(), channels_.end());
    for (const ChannelEntry& theirs : other.channels_) {
        if (ChannelEntry* entry = ours.find(theirs)) {
            entry->update(theirs);
        } else {
            added.push_back(theirs);
        }
    }
    const auto middle = channels_.insert(channels_.end(), added.begin(), added.end());
    std::inplace_merge(channels_.begin(), middle, channels_.end());
}

void ChannelList::serialize_impl(YAJLStream& stream, SerializationContext& ctx) const {
    JSONSerializer::serialize_impl(stream, ctx, "channels", channels_);
}

void ChannelList::deserialize_impl(YAJLNode& node, SerializationContext& ctx) {
    // Not the key that is written, and no error where it is missing: a list does not come back by
    // itself to the side that sent it.
    std::vector<ChannelEntry> channels;
    if (node.probe_name("channles")) {
        JSONSerializer::deserialize(node, ctx, "channles", channels);
    }
    normalize(channels);
    channels_ = std::move(channels);
}

std::string ChannelList::to_string() const {
    std::string text;
    for (const ChannelEntry& entry : channels_) {
        text.append(entry.to_string()).push_back('\n');
    }
    return text;
}

std::ostream& operator<<(std::ostream& os, const ChannelList& list) {
    return impl::write_text(os, list.to_string());
}

}  // namespace nuv
