// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <iosfwd>
#include <string>

#include "nuv/channel_types.hpp"
#include "nuv/dynamic_value.hpp"
#include "nuv/export.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/type_with_ratio.hpp"

namespace nuv {

/// A run of 20 MHz channels that a BSS operates on; of 80+80 MHz the one that holds the primary
/// channel.
struct ChannelSegment {
    KiloHertz center_frequency;
    ChannelWidth width = ChannelWidth::HT20;
    /// Bit i: the i-th 20 MHz channel from below is punctured.
    std::bitset<16> puncturing_map;

    bool operator==(const ChannelSegment&) const = default;
};

/// The channel that a BSS or a radio operates on, as one of several sources reports it.
///
/// JSON: {"primary_freq":5180000,"primary_center":5210000,"channel_width":"80 MHz",
/// "puncturing_map":0,"secondary_center":null,"max_regulatory_power":20}, frequencies in kHz, the
/// power in whole dBm; null is what was never set, and a secondary center that there is none of.
/// What is read is stamped with the current time.
class NUV_EXPORT ChannelInfo : public serialization::JSONSerializable {
public:
    using Frequency = DynamicValue<KiloHertz, LastChangedStrategy>;
    using Segment = DynamicValue<ChannelSegment, LastChangedStrategy>;
    using Power = DynamicValue<float, LastChangedStrategy>;

    ChannelInfo() = default;
    /// The secondary center is kept if the segment's width is 80+80 MHz.
    ChannelInfo(Frequency primary_frequency, Segment primary_segment,
                KiloHertz secondary_center_frequency, Power max_regulatory_power);
    /// The segment is the primary channel, set when that was.
    ChannelInfo(Frequency primary_frequency, Power max_regulatory_power);

    /// Center of the primary 20 MHz channel.
    const Frequency& get_primary_frequency() const noexcept { return primary_frequency_; }
    const Segment& get_primary_segment() const noexcept { return primary_segment_; }
    /// Center of the second segment of 80+80 MHz, else 0.
    KiloHertz get_secondary_center_frequency() const noexcept {
        return secondary_center_frequency_;
    }
    /// In dBm.
    const Power& get_max_regulatory_power() const noexcept { return max_regulatory_power_; }

    /// These take the value if it is newer than ours and differs.
    void set_primary_frequency(const Frequency& value) { primary_frequency_.update(value); }
    void set_segment(const Segment& segment, KiloHertz secondary_center_frequency);
    void set_max_regulatory_power(const Power& value) { max_regulatory_power_.update(value); }
    /// Everything to 0 and never set.
    void reset();

    /// Takes every field that is not equivalent, older ones and ones never set included, if
    /// can_update_from(other). What an older value overwrites is logged. Secondary centers are
    /// taken along with a segment, not for their own sake.
    void update(const ChannelInfo& other);
    /// False if equivalent, else whether the newest of other's fields is newer than the newest of
    /// ours. NaN is equivalent to nothing: with that power on both sides it may stay true although
    /// update() finds nothing to take.
    bool can_update_from(const ChannelInfo& other) const;
    /// Equal but for the time stamps.
    bool equivalent_to(const ChannelInfo& other) const;
    bool operator==(const ChannelInfo& other) const;

    /// For logs; what was never set is "---".
    std::string to_string() const;

    void serialize_impl(serialization::YAJLStream& stream,
                        serialization::SerializationContext& ctx) const override;
    void deserialize_impl(serialization::YAJLNode& node,
                          serialization::SerializationContext& ctx) override;

private:
    /// The fields with a time stamp.
    template <class Self>
    static auto stamped(Self& self);

    Frequency primary_frequency_;
    Segment primary_segment_;
    KiloHertz secondary_center_frequency_;
    Power max_regulatory_power_;
};

/// Writes the text form. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const ChannelInfo& info);

/// Center of the part of the segment that is `width` wide and holds the primary channel. Throws
/// std::invalid_argument if primary channel or segment were never set, for 80+80 MHz, and for a
/// width above the segment's; widths compare by their numbers.
NUV_EXPORT KiloHertz get_center_frequency_of_subsegment(const ChannelInfo& info,
                                                        ChannelWidth width);

}  // namespace nuv
