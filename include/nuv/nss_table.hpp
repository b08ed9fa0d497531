// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "nuv/channel_types.hpp"
#include "nuv/export.hpp"
#include "nuv/json_serializable.hpp"

namespace nuv {

/// Number of spatial streams at each channel width; 0 where the width is not supported.
/// x.intersect(y) == y exactly when y adds nothing to x, that is, x.merge(y) == x.
class NUV_EXPORT NSSTable {
public:
    NSSTable() = default;
    NSSTable(ChannelWidth width, std::uint8_t streams);

    /// 0 also for a width that is none.
    std::uint8_t get_num_streams(ChannelWidth width) const noexcept;
    /// Sets the streams at `width`; with `propagate_to_narrower` also at every width that
    /// channel_width_capability_bits() includes in it, and with `only_if_greater` only where there
    /// were fewer. A width that is none changes nothing.
    void update_num_streams(ChannelWidth width, std::uint8_t streams, bool propagate_to_narrower,
                            bool only_if_greater);
    void clear() noexcept { streams_ = {}; }
    void swap(NSSTable& other) noexcept { streams_.swap(other.streams_); }

    /// At each width the smaller number, which is 0 where one of both lacks it.
    NSSTable intersect(const NSSTable& other) const;
    /// At each width the greater number.
    NSSTable merge(const NSSTable& other) const;

    /// Width of the highest number with streams, INVALID for an empty table.
    ChannelWidth get_max_channel_width() const noexcept;
    std::uint8_t get_max_streams() const noexcept;

    /// "20 MHz: 2, 80 MHz: 2": the widths with streams.
    std::string to_string() const;

    bool operator==(const NSSTable&) const = default;
    std::strong_ordering operator<=>(const NSSTable& other) const noexcept {
        return streams_ <=> other.streams_;
    }

private:
    std::array<std::uint8_t, 6> streams_{};  // by the number of the width
};

/// Writes the text form. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const NSSTable& table);

}  // namespace nuv

namespace nuv::serialization {

/// {"20 MHz":2,"80 MHz":2}: the widths with streams; one that is missing or null has none.
template <>
struct NUV_EXPORT JSONSerializableType<NSSTable> {
    static void serialize(YAJLStream& stream, SerializationContext& ctx, const NSSTable& value);
    static void deserialize(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                            NSSTable& value);
};

}  // namespace nuv::serialization
