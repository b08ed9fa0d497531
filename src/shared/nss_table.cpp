// SPDX-License-Identifier: Apache-2.0
#include "nuv/nss_table.hpp"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

#include "internal/classic_stream.hpp"
#include "internal/json_nullable.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/scoped_json.hpp"

namespace nuv {

namespace {

constexpr std::array WIDTHS{ChannelWidth::HT20,  ChannelWidth::HT40,   ChannelWidth::HT80,
                            ChannelWidth::HT160, ChannelWidth::HT8080, ChannelWidth::HT320};

std::array<std::uint8_t, WIDTHS.size()> combined(const auto& a, const auto& b, auto choose) {
    std::array<std::uint8_t, WIDTHS.size()> chosen{};
    std::transform(a.begin(), a.end(), b.begin(), chosen.begin(), choose);
    return chosen;
}

}  // namespace

NSSTable::NSSTable(ChannelWidth width, std::uint8_t streams) {
    update_num_streams(width, streams, false, false);
}

std::uint8_t NSSTable::get_num_streams(ChannelWidth width) const noexcept {
    const auto index = static_cast<std::size_t>(width);
    return index < streams_.size() ? streams_[index] : std::uint8_t{0};
}

void NSSTable::update_num_streams(ChannelWidth width, std::uint8_t streams,
                                  bool propagate_to_narrower, bool only_if_greater) {
    const ChannelCapabilityBits included = channel_width_capability_bits(width);
    for (std::size_t index = 0; index < streams_.size(); ++index) {
        if ((WIDTHS[index] == width || (propagate_to_narrower && included[index])) &&
            (!only_if_greater || streams_[index] < streams)) {
            streams_[index] = streams;
        }
    }
}

NSSTable NSSTable::intersect(const NSSTable& other) const {
    NSSTable table;
    table.streams_ = combined(streams_, other.streams_, std::ranges::min);
    return table;
}

NSSTable NSSTable::merge(const NSSTable& other) const {
    NSSTable table;
    table.streams_ = combined(streams_, other.streams_, std::ranges::max);
    return table;
}

ChannelWidth NSSTable::get_max_channel_width() const noexcept {
    for (auto width = WIDTHS.rbegin(); width != WIDTHS.rend(); ++width) {
        if (get_num_streams(*width) > 0) {
            return *width;
        }
    }
    return ChannelWidth::INVALID;
}

std::uint8_t NSSTable::get_max_streams() const noexcept {
    return *std::max_element(streams_.begin(), streams_.end());
}

std::string NSSTable::to_string() const {
    std::string text;
    for (const ChannelWidth width : WIDTHS) {
        if (const int streams = get_num_streams(width)) {
            text.append(text.empty() ? "" : ", ")
                .append(enum_to_string(width))
                .append(": ")
                .append(std::to_string(streams));
        }
    }
    return text;
}

std::ostream& operator<<(std::ostream& os, const NSSTable& table) {
    return impl::write_text(os, table.to_string());
}

}  // namespace nuv

namespace nuv::serialization {

void JSONSerializableType<NSSTable>::serialize(YAJLStream& stream, SerializationContext& ctx,
                                               const NSSTable& value) {
    const ScopedJSONObject object(stream, "Serialization of NSSTable failed: ");
    for (const ChannelWidth width : WIDTHS) {
        if (const std::uint8_t streams = value.get_num_streams(width)) {
            JSONSerializer::serialize_impl(stream, ctx, enum_to_string(width), streams);
        }
    }
}

void JSONSerializableType<NSSTable>::deserialize(YAJLNode& node, SerializationContext& ctx,
                                                 const std::string& key, NSSTable& value) {
    YAJLNode object;
    if (!key.empty() && !node.get_object(key, object)) {
        impl::throw_json_read_failed("NSSTable", key);
    }
    YAJLNode& widths = key.empty() ? node : object;
    NSSTable table;
    for (const ChannelWidth width : WIDTHS) {
        std::uint8_t streams = 0;
        impl::read_nullable(widths, ctx, enum_to_string(width), streams);
        table.update_num_streams(width, streams, false, false);
    }
    value = table;
}

}  // namespace nuv::serialization
