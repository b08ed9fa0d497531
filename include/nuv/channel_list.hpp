// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "nuv/channel_entry.hpp"
#include "nuv/channel_types.hpp"
#include "nuv/export.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/type_with_ratio.hpp"

namespace nuv {

/// The channels of a radio, ascending by frequency, one entry for each.
///
/// JSON is written as {"channels":[...]} and read from {"channles":[...]}, on purpose: what this
/// library wrote is read back without entries unless the key is changed in between.
class NUV_EXPORT ChannelList : public serialization::JSONSerializable {
public:
    enum class UpdateType : std::uint8_t {
        COMPLETE = 0,  ///< a report of all channels of the radio
        PARTIAL = 1,   ///< a report, as every other number, of those entries alone that are in it
    };

    ChannelList() = default;
    /// In any order; of several entries with the same frequency the last one counts.
    explicit ChannelList(std::vector<ChannelEntry> channels,
                         UpdateType update_type = UpdateType::COMPLETE);

    const std::vector<ChannelEntry>& get_channels() const noexcept { return channels_; }
    /// Of this list as a report; neither update() nor reading changes it.
    UpdateType get_update_type() const noexcept { return update_type_; }
    void set_update_type(UpdateType update_type) noexcept { update_type_ = update_type; }

    /// The entry with this frequency, or null. Its frequency must stay as it is.
    const ChannelEntry* get_channel_entry(KiloHertz frequency) const;
    ChannelEntry* get_channel_entry(KiloHertz frequency);

    /// Sets or clears the mark of the channels `first_channel` to `last_channel`, by number.
    void set_performance_opt_flag(std::uint8_t first_channel, std::uint8_t last_channel, bool flag);

    /// To the empty set, never set.
    void reset_configuration_flags();
    void reset_state_flags();
    void reset_state_and_config_flags();
    /// Those never set to the empty set, set now.
    void set_unset_state_flags_to_default_state();
    void set_unset_configuration_flags_to_not_penalized();

    bool has_common_channel_with(const ChannelList& other) const;

    /// As many entries, and configuration flags that are pairwise equal but for their time stamps.
    bool channel_configuration_equivalent_to(const ChannelList& other) const;
    /// The same update type, and entries that are pairwise equal but for their time stamps.
    bool equivalent_to(const ChannelList& other) const;
    /// The same entries, whatever the update type.
    bool operator==(const ChannelList& other) const { return channels_ == other.channels_; }
    /// By the frequencies, a list before those that continue it.
    bool operator<(const ChannelList& other) const { return channels_ < other.channels_; }

    /// A line for each entry.
    std::string to_string() const;

    /// Band of the first entry, the invalid band for an empty list. Logs a warning when the entries
    /// lie in several.
    DetailedFrequencyBand get_detailed_frequency_band() const;
    FrequencyBand get_frequency_band() const;

    /// Merges the entries of `other`, and drops those that it lacks if it is a complete report.
    void update(const ChannelList& other);
    /// Whether update() would change anything.
    bool can_update_from(const ChannelList& other) const;

    void serialize_impl(serialization::YAJLStream& stream,
                        serialization::SerializationContext& ctx) const override;
    void deserialize_impl(serialization::YAJLNode& node,
                          serialization::SerializationContext& ctx) override;

private:
    std::vector<ChannelEntry> channels_;
    UpdateType update_type_ = UpdateType::COMPLETE;
};

/// Writes the text form. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const ChannelList& list);

}  // namespace nuv
