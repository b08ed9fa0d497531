// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>

#include "nuv/export.hpp"
#include "nuv/json_serializable.hpp"

namespace nuv::plc {

/// The identifier of a powerline network: seven octets, all zero by default. Binary form: the
/// octets.
class NID {
public:
    static constexpr std::uint32_t NID_LEN = 7;
    using Octets = std::array<std::uint8_t, NID_LEN>;

    constexpr NID() = default;
    constexpr explicit NID(const Octets& octets) noexcept : octets_(octets) {}

    Octets& octets() noexcept { return octets_; }
    const Octets& octets() const noexcept { return octets_; }

    bool operator==(const NID&) const = default;

private:
    Octets octets_{};
};

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
