// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "nuv/channel_types.hpp"
#include "nuv/dynamic_value.hpp"
#include "nuv/export.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/small_vector.hpp"
#include "nuv/type_with_ratio.hpp"

namespace nuv {

/// One 20 MHz channel of a radio: what regulation allows on it, its radar state, how it is marked,
/// and what was measured.
///
/// JSON: {"channel":36,"frequency":5180000,"config_flags":null,"max_regulatory_power":null}, the
/// frequency in kHz, the flags a list of texts, the power in whole dBm. Reading keeps the channel,
/// the frequency (which without one follows from the channel, 2.4 GHz below 36 and 5 GHz from
/// there on) and whether the flags were set; everything else is cleared. Capabilities, state flags,
/// noise and utilization are not written.
class NUV_EXPORT ChannelEntry : public serialization::JSONSerializable {
public:
    using StateFlags = DynamicValue<ChannelStateBits, LastChangedStrategy>;
    using ConfigFlags = DynamicValue<ChannelConfigBits, LastChangedStrategy>;
    using Power = DynamicValue<float, LastChangedStrategy>;
    using Measurement = DynamicValue<std::uint8_t, LastUpdatedStrategy>;

    ChannelEntry() = default;
    ChannelEntry(std::uint8_t channel, KiloHertz frequency, ChannelCapabilityBits capability_flags,
                 StateFlags state_flags, ConfigFlags config_flags, Power max_regulatory_power,
                 Measurement anpi, Measurement channel_utilization);

    std::uint8_t get_channel() const noexcept { return channel_; }
    /// Center of the channel.
    KiloHertz get_frequency() const noexcept { return frequency_; }
    const ChannelCapabilityBits& get_capability_flags() const noexcept { return capability_flags_; }
    const StateFlags& get_state_flags() const noexcept { return state_flags_; }
    const ConfigFlags& get_config_flags() const noexcept { return config_flags_; }
    /// In dBm.
    const Power& get_max_regulatory_power() const noexcept { return max_regulatory_power_; }
    /// Average noise plus interference (IEEE 802.11-2020, 11.10.9.4): 0.5 * value - 110 dBm.
    const Measurement& get_anpi() const noexcept { return anpi_; }
    const Measurement& get_channel_utilization() const noexcept { return channel_utilization_; }

    /// These replace the field whole, the time stamp included.
    void set_capability_flags(const ChannelCapabilityBits& flags) { capability_flags_ = flags; }
    void set_state_flags(const StateFlags& flags) { state_flags_ = flags; }
    void set_config_flags(const ConfigFlags& flags) { config_flags_ = flags; }
    void set_max_regulatory_power(const Power& power) { max_regulatory_power_ = power; }
    void set_anpi(const Measurement& anpi) { anpi_ = anpi; }
    void set_channel_utilization(const Measurement& value) { channel_utilization_ = value; }

    /// One bit each of the configuration flags. Setting stamps them with the current time if they
    /// change or were never set.
    bool get_remote_disturber() const;
    bool get_performance_opt() const;
    void set_remote_disturber(bool value);
    void set_performance_opt(bool value);

    /// Lowest and highest of the widths that the capability flags allow, INVALID for none.
    ChannelWidth get_min_supported_channel_width() const;
    /// 80+80 MHz also where 320 MHz is the only wide one, on purpose; unlike
    /// capability_bits_max_channel_width().
    ChannelWidth get_max_supported_channel_width() const;
    /// Ascending by number.
    SmallVector<ChannelWidth, 6> get_all_supported_channel_width() const;

    DetailedFrequencyBand get_detailed_frequency_band() const;
    FrequencyBand get_frequency_band() const;

    /// Takes channel and frequency, adds the capability flags, and takes of the other fields what
    /// their strategies let through.
    void update(const ChannelEntry& other);
    /// Whether update() would change anything.
    bool can_update_from(const ChannelEntry& other) const;
    /// Equal but for the time stamps.
    bool equivalent_to(const ChannelEntry& other) const;
    bool operator==(const ChannelEntry& other) const;
    /// By frequency alone.
    bool operator<(const ChannelEntry& other) const { return frequency_ < other.frequency_; }

    /// " 36 | 5180000 kHz | 20 | 0000000111 | 00000 | 00 | -110 | 0": channel, frequency, power,
    /// the three sets of flags, highest bit first, noise in dBm, utilization.
    std::string to_string() const;

    void serialize_impl(serialization::YAJLStream& stream,
                        serialization::SerializationContext& ctx) const override;
    void deserialize_impl(serialization::YAJLNode& node,
                          serialization::SerializationContext& ctx) override;

private:
    /// The fields with a time stamp.
    template <class Self>
    static auto stamped(Self& self);
    bool get_config_flag(ChannelConfigBit bit) const;
    void set_config_flag(ChannelConfigBit bit, bool value);

    std::uint8_t channel_ = 0;
    KiloHertz frequency_;
    ChannelCapabilityBits capability_flags_;
    StateFlags state_flags_;
    ConfigFlags config_flags_;
    Power max_regulatory_power_;
    Measurement anpi_;
    Measurement channel_utilization_;
};

/// Writes the text form. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const ChannelEntry& entry);

}  // namespace nuv
