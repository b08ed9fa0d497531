// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "nuv/export.hpp"
#include "nuv/ip_address.hpp"
#include "nuv/text_argument.hpp"

namespace nuv {

/// An IPv6 address, :: by default.
class NUV_EXPORT IPv6Address final : public impl::IPAddressOctets<IPv6Address, 16> {
public:
    static constexpr std::size_t NUM_SEGMENTS = 8;
    /// In host order, the most significant one first.
    using Segments = std::array<std::uint16_t, NUM_SEGMENTS>;

    static const IPv6Address UNSPECIFIED;

    constexpr IPv6Address() = default;
    explicit IPv6Address(const Segments& segments) noexcept;
    /// Throw std::invalid_argument unless there are sixteen.
    explicit IPv6Address(std::span<const std::byte> bytes);
    explicit IPv6Address(std::span<const std::uint8_t> octets);
    /// Throws as from_string() does.
    explicit IPv6Address(TextArgument text);

    Segments to_segments() const noexcept;

    bool is_benchmarking() const noexcept override;
    bool is_documentation() const noexcept override;
    bool is_loopback() const noexcept override;
    bool is_link_local() const noexcept override;
    bool is_unicast() const noexcept override;
    bool is_multicast() const noexcept override;
    /// fc00::/7 (RFC 4193).
    bool is_unique_local() const noexcept;
    /// ::ffff:0:0/96 (RFC 4291, 2.5.5.2).
    bool is_mapped_v4() const noexcept;
    /// ::/96 (RFC 4291, 2.5.5.1), :: and ::1 included.
    bool is_compatible_v4() const noexcept;

    /// The canonical form of RFC 5952; only an IPv4-mapped address has a dotted end.
    std::string to_string() const override;
    /// Reads at most 39 characters (which refuses some texts with a dotted end) and at most eight
    /// segments, where a "::" at either end of the text counts as two. A segment is read as a scan
    /// of a hexadecimal number reads it: up to four characters, a sign and "0x" included, blanks
    /// around them.
    void from_string(TextArgument text) override;
};

}  // namespace nuv

template <>
struct std::hash<nuv::IPv6Address> : std::hash<nuv::IPAddress> {};
