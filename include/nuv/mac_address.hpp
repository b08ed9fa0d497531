// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "nuv/export.hpp"
#include "nuv/interface_name.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/text_argument.hpp"

namespace nuv {

/// A 48-bit MAC address (IEEE 802-2014, 8.2): six octets in transmission order, all zero by
/// default. Text form: 00:1A:2B:3C:4D:5E; binary form: the octets. Ordered as unsigned octets, the
/// first one most significant.
class NUV_EXPORT MACAddress {
public:
    static constexpr std::uint32_t MAC_ADDR_LEN = 6;
    static constexpr std::uint32_t MAC_ADDR_STRING_LEN = 17;
    using Octets = std::array<std::uint8_t, MAC_ADDR_LEN>;

    constexpr MACAddress() = default;
    constexpr explicit MACAddress(const Octets& octets) noexcept : octets_(octets) {}
    /// Throws std::invalid_argument when parse_string() would refuse `text`.
    explicit MACAddress(TextArgument text);

    /// Reads the text form, in upper or lower case. Returns false for anything else; the octets
    /// before the place that does not fit may then be replaced already.
    bool parse_string(TextArgument text) noexcept;
    std::string to_string() const;

    const Octets& octets() const noexcept { return octets_; }
    /// Throws std::out_of_range for an index of 6 and above.
    std::uint8_t& operator[](std::size_t index) { return octets_.at(index); }
    const std::uint8_t& operator[](std::size_t index) const { return octets_.at(index); }
    void swap(MACAddress& other) noexcept { octets_.swap(other.octets_); }

    /// The two address-type bits, I/G and U/L, of octet 0.
    MACAddress& set_individual() noexcept { return change_bits(GROUP, 0); }
    MACAddress& set_group() noexcept { return change_bits(GROUP, GROUP); }
    MACAddress& set_universally_administered() noexcept { return change_bits(LOCAL, 0); }
    MACAddress& set_locally_administered() noexcept { return change_bits(LOCAL, LOCAL); }
    bool is_group() const noexcept { return (octets_[0] & GROUP) != 0; }
    bool is_locally_administered() const noexcept { return (octets_[0] & LOCAL) != 0; }

    bool operator==(const MACAddress&) const = default;
    std::strong_ordering operator<=>(const MACAddress& other) const noexcept {
        return octets_ <=> other.octets_;
    }

private:
    static constexpr std::uint8_t GROUP = 0x01;
    static constexpr std::uint8_t LOCAL = 0x02;

    MACAddress& change_bits(std::uint8_t mask, std::uint8_t bits) noexcept {
        octets_[0] = static_cast<std::uint8_t>((octets_[0] & ~mask) | bits);
        return *this;
    }

    Octets octets_{};
};

/// Writes the text form; the stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const MACAddress& address);

/// Reads a word of at most 17 characters; what is longer stays in the stream. When the word is no
/// address, or the stream ended while it was read, `address` stays and the stream's state becomes
/// exactly the fail bit: an end-of-file bit is dropped. The stream's width does not change.
NUV_EXPORT std::istream& operator>>(std::istream& is, MACAddress& address);

/// False for 00:00:00:00:00:00 and for 00:B0:52:00:00:01.
NUV_EXPORT bool is_valid_mac_address(const MACAddress& address) noexcept;

/// The same, and false for every group address.
NUV_EXPORT bool is_valid_individual_mac_address(const MACAddress& address) noexcept;

/// Hardware address of a network interface; all zero when the platform knows none.
NUV_EXPORT MACAddress get_mac_for_ifname(const InterfaceName& ifname) noexcept;

}  // namespace nuv

/// FNV-1a of 32 bits, also where std::size_t has 64.
template <>
struct std::hash<nuv::MACAddress> {
    std::size_t operator()(const nuv::MACAddress& address) const noexcept {
        std::uint32_t value = 0x811C9DC5;
        for (const std::uint8_t octet : address.octets()) {
            value = (value ^ octet) * 16777619U;
        }
        return value;
    }
};

namespace nuv::serialization {

/// The text form. Where the text that was read is no address, the std::invalid_argument of
/// MACAddress passes through; only where there is no text, it is a SerializationException.
template <>
struct NUV_EXPORT JSONSerializableType<MACAddress> {
    static void serialize(YAJLStream& stream, SerializationContext& ctx, const MACAddress& value);
    static void deserialize(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                            MACAddress& value);
};

}  // namespace nuv::serialization
