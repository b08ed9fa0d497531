// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "nuv/export.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/text_argument.hpp"

namespace nuv::plc {

/// The identifier of a powerline network: seven octets, all zero by default. Text form:
/// 01:02:03:04:05:06:07; binary form: the octets. Ordered as unsigned octets, the first one most
/// significant.
class NUV_EXPORT NID {
public:
    static constexpr std::uint32_t NID_LEN = 7;
    static constexpr std::uint32_t NID_STRING_LEN = 20;
    using Octets = std::array<std::uint8_t, NID_LEN>;

    constexpr NID() = default;
    constexpr explicit NID(const Octets& octets) noexcept : octets_(octets) {}
    /// Throws std::invalid_argument when parse_string() would refuse `text`.
    explicit NID(TextArgument text);

    /// Reads the text form, in upper or lower case. Returns false, with the octets as before, for
    /// anything else. JSON accepts more texts.
    bool parse_string(TextArgument text) noexcept;
    /// In upper case.
    std::string to_string() const;

    Octets& octets() noexcept { return octets_; }
    const Octets& octets() const noexcept { return octets_; }

    bool operator==(const NID&) const = default;
    std::strong_ordering operator<=>(const NID& other) const noexcept {
        return octets_ <=> other.octets_;
    }

private:
    Octets octets_{};
};

/// Writes the text form; the stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const NID& nid);

}  // namespace nuv::plc

namespace nuv::serialization {

/// 01:02:03:04:05:06:07, written in upper case. Read as a scan of hex numbers reads it: what fills
/// the first 20 characters counts, a blank or a sign in place of a digit included ("-1" is 0xFF),
/// and what stands behind them is not looked at.
template <>
struct NUV_EXPORT JSONSerializableType<plc::NID> {
    static void serialize(YAJLStream& stream, SerializationContext& ctx, const plc::NID& value);
    static void deserialize(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                            plc::NID& value);
};

}  // namespace nuv::serialization
