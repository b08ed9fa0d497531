// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_info.hpp"

#include <algorithm>
#include <functional>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "internal/classic_stream.hpp"
#include "internal/dbm.hpp"
#include "internal/json_nullable.hpp"
#include "internal/log_module.hpp"
#include "internal/stamped_fields.hpp"
#include "nuv/frequency_conversion.hpp"

namespace nuv {

using serialization::SerializationContext;
using serialization::SerializationException;
using serialization::YAJLNode;
using serialization::YAJLStream;

namespace {

constinit impl::LogModule log_module{"channel_info", "src/shared/channel_info"};

std::string text_of(KiloHertz frequency) { return std::to_string(frequency.count()) + " kHz"; }

std::string text_of(const ChannelSegment& segment) {
    return text_of(segment.center_frequency) + ", " + enum_to_string(segment.width) + ", " +
           segment.puncturing_map.to_string();
}

float text_of(float power) { return power; }  // a stream writes it

/// Unsigned, for a value that was never set is older than what 64 bits hold.
std::int64_t age_ms(const auto& field, std::int64_t now) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(now) -
                                     static_cast<std::uint64_t>(field.get_timestamp())) /
           1000000;
}

/// One field of ChannelInfo::update(), which also the record says: takes `theirs` unless it is
/// equivalent, tells whether.
template <class Field>
bool update(Field& ours, const Field& theirs, std::int64_t now, std::string_view name) {
    if (ours.equivalent_to(theirs)) {
        return false;
    }
    if (theirs.get_timestamp() < ours.get_timestamp()) {
        NUV_LOG(log_module, info) << "Overwriting " << name << ' ' << text_of(ours.get())
                                  << " (age " << age_ms(ours, now) << " ms) with older value "
                                  << text_of(theirs.get()) << " (age " << age_ms(theirs, now)
                                  << " ms).";
    }
    ours = theirs;
    return true;
}

KiloHertz secondary_center_of(const ChannelInfo::Segment& segment, KiloHertz center) {
    return segment.get().width == ChannelWidth::HT8080 ? center : KiloHertz();
}

/// `frequency` and its channel number.
std::string text_with_channel(KiloHertz frequency) {
    return text_of(frequency) + " (channel " + std::to_string(frequency_to_channel(frequency)) +
           ')';
}

}  // namespace

template <class Self>
auto ChannelInfo::stamped(Self& self) {
    return std::tie(self.primary_frequency_, self.primary_segment_, self.max_regulatory_power_);
}

ChannelInfo::ChannelInfo(Frequency primary_frequency, Segment primary_segment,
                         KiloHertz secondary_center_frequency, Power max_regulatory_power)
    : primary_frequency_(primary_frequency),
      primary_segment_(primary_segment),
      secondary_center_frequency_(secondary_center_of(primary_segment, secondary_center_frequency)),
      max_regulatory_power_(max_regulatory_power) {}

ChannelInfo::ChannelInfo(Frequency primary_frequency, Power max_regulatory_power)
    : ChannelInfo(
          primary_frequency,
          {{primary_frequency.get(), ChannelWidth::HT20, {}}, primary_frequency.get_timestamp()},
          {}, max_regulatory_power) {}

void ChannelInfo::set_segment(const Segment& segment, KiloHertz secondary_center_frequency) {
    if (primary_segment_.update(segment)) {
        secondary_center_frequency_ = secondary_center_of(segment, secondary_center_frequency);
    }
}

void ChannelInfo::reset() { *this = ChannelInfo(); }

bool ChannelInfo::equivalent_to(const ChannelInfo& other) const {
    return secondary_center_frequency_ == other.secondary_center_frequency_ &&
           impl::equivalent_fields(stamped(*this), stamped(other));
}

bool ChannelInfo::operator==(const ChannelInfo& other) const {
    return secondary_center_frequency_ == other.secondary_center_frequency_ &&
           stamped(*this) == stamped(other);
}

bool ChannelInfo::can_update_from(const ChannelInfo& other) const {
    const auto newest = [](const auto&... fields) { return std::max({fields.get_timestamp()...}); };
    return !equivalent_to(other) &&
           std::apply(newest, stamped(other)) > std::apply(newest, stamped(*this));
}

void ChannelInfo::update(const ChannelInfo& other) {
    if (!can_update_from(other)) {
        return;
    }
    // The report that is newest as a whole wins in every field, also where it is older or says
    // nothing: the records are the only trace.
    const std::int64_t now = steady_now_ns();
    nuv::update(primary_frequency_, other.primary_frequency_, now, "primary frequency");
    if (nuv::update(primary_segment_, other.primary_segment_, now, "primary segment")) {
        secondary_center_frequency_ = other.secondary_center_frequency_;
    }
    nuv::update(max_regulatory_power_, other.max_regulatory_power_, now, "max power");
}

void ChannelInfo::serialize_impl(YAJLStream& stream, SerializationContext& ctx) const {
    const auto write = [&](std::string_view key, auto value) {
        impl::write_nullable(stream, ctx, "ChannelInfo", ".", key, std::move(value));
    };
    const auto map_of = [](const ChannelSegment& segment) {
        return static_cast<std::uint16_t>(segment.puncturing_map.to_ulong());
    };
    const bool paired =
        primary_segment_.is_set() && primary_segment_.get().width == ChannelWidth::HT8080;

    write("primary_freq", impl::if_set(primary_frequency_, std::identity()));
    write("primary_center", impl::if_set(primary_segment_, &ChannelSegment::center_frequency));
    write("channel_width", impl::if_set(primary_segment_, &ChannelSegment::width));
    write("puncturing_map", impl::if_set(primary_segment_, map_of));
    write("secondary_center", paired ? std::optional(secondary_center_frequency_) : std::nullopt);
    write("max_regulatory_power", impl::if_set(max_regulatory_power_, impl::whole_dbm));
}

void ChannelInfo::deserialize_impl(YAJLNode& node, SerializationContext& ctx) {
    const std::int64_t now = steady_now_ns();
    ChannelInfo read;
    KiloHertz frequency;
    if (impl::read_nullable(node, ctx, "primary_freq", frequency)) {
        read.set_primary_frequency({frequency, now});
    }
    ChannelSegment segment;
    if (impl::read_nullable(node, ctx, "primary_center", segment.center_frequency)) {
        if (!impl::read_nullable(node, ctx, "channel_width", segment.width)) {
            throw SerializationException(
                "Deserialization of ChannelInfo failed because channel_width is missing or null.");
        }
        std::uint16_t map = 0;
        KiloHertz secondary_center;
        impl::read_nullable(node, ctx, "puncturing_map", map);
        impl::read_nullable(node, ctx, "secondary_center", secondary_center);
        segment.puncturing_map = map;
        read.set_segment({segment, now}, secondary_center);
    }
    std::int32_t power = 0;
    if (impl::read_nullable(node, ctx, "max_regulatory_power", power)) {
        read.set_max_regulatory_power({static_cast<float>(power), now});
    }
    *this = read;
}

std::string ChannelInfo::to_string() const {
    constexpr const char* UNSET = "---";
    impl::ClassicStream text;
    text << "primary frequency: "
         << impl::if_set(primary_frequency_, text_with_channel).value_or(UNSET)
         << ", segment info: ";
    if (primary_segment_.is_set()) {
        const ChannelSegment& segment = primary_segment_.get();
        text << "primary center: " << text_with_channel(segment.center_frequency)
             << ", channel width: " << segment.width;
        if (segment.width == ChannelWidth::HT8080) {
            // No separator: readers of logs know it without.
            text << "secondary center: " << text_with_channel(secondary_center_frequency_);
        }
        text << ", puncturing map: " << segment.puncturing_map;
    } else {
        text << UNSET;
    }
    text << ", max power: ";
    if (max_regulatory_power_.is_set()) {
        text << max_regulatory_power_.get() << " dBm";
    } else {
        text << UNSET;
    }
    return std::move(text).str();
}

std::ostream& operator<<(std::ostream& os, const ChannelInfo& info) {
    return impl::write_text(os, info.to_string());
}

KiloHertz get_center_frequency_of_subsegment(const ChannelInfo& info, ChannelWidth width) {
    if (!info.get_primary_frequency().is_set()) {
        throw std::invalid_argument("primary frequency not set");
    }
    if (!info.get_primary_segment().is_set()) {
        throw std::invalid_argument("primary segment not set");
    }
    if (width == ChannelWidth::HT8080) {
        throw std::invalid_argument("not possible to get center for 80+80 bandwidth");
    }
    const ChannelSegment& segment = info.get_primary_segment().get();
    if (segment.width < width) {
        throw std::invalid_argument("desired segment wider than current segment");
    }
    const std::int64_t primary = info.get_primary_frequency().get().count();
    const std::int64_t wanted = ratio_cast<KiloHertz>(channel_width_to_frequency(width)).count();
    std::int64_t half =
        ratio_cast<KiloHertz>(channel_width_to_frequency(segment.width)).count() / 2;
    std::int64_t center = segment.center_frequency.count();
    while (half > 0 && wanted <= half) {  // an invalid width has a bandwidth of 0
        half /= 2;
        center += primary < center ? -half : half;
    }
    return KiloHertz(static_cast<std::int32_t>(center));
}

}  // namespace nuv
