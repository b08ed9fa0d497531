// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_entry.hpp"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "internal/classic_stream.hpp"
#include "internal/dbm.hpp"
#include "internal/json_nullable.hpp"
#include "internal/stamped_fields.hpp"
#include "nuv/frequency_conversion.hpp"

namespace nuv {

using serialization::JSONSerializer;
using serialization::SerializationContext;
using serialization::YAJLNode;
using serialization::YAJLStream;

namespace {

std::vector<std::string> names_of(const ChannelConfigBits& flags) {
    std::vector<std::string> names;
    for (std::size_t bit = 0; bit < flags.size(); ++bit) {
        if (flags[bit]) {
            names.push_back(enum_to_string(static_cast<ChannelConfigBit>(bit)));
        }
    }
    return names;
}

/// Never 6 GHz: a number alone does not tell.
KiloHertz frequency_of(std::uint8_t channel) {
    const auto band = channel < 36 ? FrequencyBand::BAND_2_4_GHZ : FrequencyBand::BAND_5_GHZ;
    return channel_to_frequency(band_to_starting_frequency(band), channel);
}

}  // namespace

template <class Self>
auto ChannelEntry::stamped(Self& self) {
    return std::tie(self.state_flags_, self.config_flags_, self.max_regulatory_power_, self.anpi_,
                    self.channel_utilization_);
}

ChannelEntry::ChannelEntry(std::uint8_t channel, KiloHertz frequency,
                           ChannelCapabilityBits capability_flags, StateFlags state_flags,
                           ConfigFlags config_flags, Power max_regulatory_power, Measurement anpi,
                           Measurement channel_utilization)
    : channel_(channel),
      frequency_(frequency),
      capability_flags_(capability_flags),
      state_flags_(state_flags),
      config_flags_(config_flags),
      max_regulatory_power_(max_regulatory_power),
      anpi_(anpi),
      channel_utilization_(channel_utilization) {}

bool ChannelEntry::get_config_flag(ChannelConfigBit bit) const {
    return config_flags_.get()[static_cast<std::size_t>(bit)];
}

void ChannelEntry::set_config_flag(ChannelConfigBit bit, bool value) {
    auto flags = config_flags_.get();
    config_flags_.set(flags.set(static_cast<std::size_t>(bit), value));
}

bool ChannelEntry::get_remote_disturber() const {
    return get_config_flag(ChannelConfigBit::REMOTE_DISTURBER);
}

bool ChannelEntry::get_performance_opt() const {
    return get_config_flag(ChannelConfigBit::PERFORMANCE_OPTIMIZATION);
}

void ChannelEntry::set_remote_disturber(bool value) {
    set_config_flag(ChannelConfigBit::REMOTE_DISTURBER, value);
}

void ChannelEntry::set_performance_opt(bool value) {
    set_config_flag(ChannelConfigBit::PERFORMANCE_OPTIMIZATION, value);
}

SmallVector<ChannelWidth, 6> ChannelEntry::get_all_supported_channel_width() const {
    SmallVector<ChannelWidth, 6> widths;
    for (std::uint8_t number = 0; number < 6; ++number) {
        if (capability_flags_[number]) {  // the bit of a width has its number
            widths.push_back(static_cast<ChannelWidth>(number));
        }
    }
    return widths;
}

ChannelWidth ChannelEntry::get_min_supported_channel_width() const {
    const auto widths = get_all_supported_channel_width();
    return widths.empty() ? ChannelWidth::INVALID : widths[0];
}

ChannelWidth ChannelEntry::get_max_supported_channel_width() const {
    const auto widths = get_all_supported_channel_width();
    if (widths.empty()) {
        return ChannelWidth::INVALID;
    }
    // A channel that allows 320 MHz reports 80+80 MHz.
    return std::min(widths[widths.size() - 1], ChannelWidth::HT8080);
}

DetailedFrequencyBand ChannelEntry::get_detailed_frequency_band() const {
    return frequency_to_detailed_band(frequency_);
}

FrequencyBand ChannelEntry::get_frequency_band() const { return frequency_to_band(frequency_); }

void ChannelEntry::update(const ChannelEntry& other) {
    channel_ = other.channel_;
    frequency_ = other.frequency_;
    capability_flags_ |= other.capability_flags_;
    impl::update_fields(stamped(*this), stamped(other));
}

bool ChannelEntry::can_update_from(const ChannelEntry& other) const {
    return channel_ != other.channel_ || frequency_ != other.frequency_ ||
           (other.capability_flags_ & ~capability_flags_).any() ||
           impl::can_update_fields(stamped(*this), stamped(other));
}

bool ChannelEntry::equivalent_to(const ChannelEntry& other) const {
    return channel_ == other.channel_ && frequency_ == other.frequency_ &&
           capability_flags_ == other.capability_flags_ &&
           impl::equivalent_fields(stamped(*this), stamped(other));
}

bool ChannelEntry::operator==(const ChannelEntry& other) const {
    return channel_ == other.channel_ && frequency_ == other.frequency_ &&
           capability_flags_ == other.capability_flags_ && stamped(*this) == stamped(other);
}

void ChannelEntry::serialize_impl(YAJLStream& stream, SerializationContext& ctx) const {
    const auto write = [&](std::string_view key, auto value) {
        impl::write_nullable(stream, ctx, "ChannelEntry", "", key, std::move(value));
    };
    JSONSerializer::serialize_impl(stream, ctx, "channel", channel_, "frequency", frequency_);
    write("config_flags", impl::if_set(config_flags_, names_of));
    write("max_regulatory_power", impl::if_set(max_regulatory_power_, impl::whole_dbm));
}

void ChannelEntry::deserialize_impl(YAJLNode& node, SerializationContext& ctx) {
    ChannelEntry read;
    JSONSerializer::deserialize(node, ctx, "channel", read.channel_);
    std::int64_t frequency = 0;  // before it is cut: only what is written as 0 counts as absent
    impl::read_nullable(node, ctx, "frequency", frequency);
    read.frequency_ = frequency == 0 ? frequency_of(read.channel_)
                                     : KiloHertz(static_cast<KiloHertz::rep>(frequency));
    // Marks and power are local to who wrote them. That the flags are set is told, not which; the
    // power is read for its type alone.
    std::vector<std::string> names;
    if (impl::read_nullable(node, ctx, "config_flags", names)) {
        read.config_flags_.set({});
    }
    std::int32_t power = 0;
    impl::read_nullable(node, ctx, "max_regulatory_power", power);
    *this = read;
}

std::string ChannelEntry::to_string() const {
    impl::ClassicStream text;
    text << ' ' << int{channel_} << " | " << frequency_.count() << " kHz | "
         << max_regulatory_power_.get() << " | " << capability_flags_ << " | " << state_flags_.get()
         << " | " << config_flags_.get() << " | " << 0.5 * anpi_.get() - 110 << " | "
         << int{channel_utilization_.get()};
    return std::move(text).str();
}

std::ostream& operator<<(std::ostream& os, const ChannelEntry& entry) {
    return impl::write_text(os, entry.to_string());
}

}  // namespace nuv
