// SPDX-License-Identifier: Apache-2.0
#pragma once

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

/// An IPv4 address, 0.0.0.0 by default.
class NUV_EXPORT IPv4Address final : public impl::IPAddressOctets<IPv4Address, 4> {
public:
    static const IPv4Address UNSPECIFIED;

    constexpr IPv4Address() = default;
    /// `number` is in host order: 0x7F000001 is 127.0.0.1.
    constexpr explicit IPv4Address(std::uint32_t number) noexcept
        : IPAddressOctets(
              {static_cast<std::uint8_t>(number >> 24U), static_cast<std::uint8_t>(number >> 16U),
               static_cast<std::uint8_t>(number >> 8U), static_cast<std::uint8_t>(number)}) {}
    /// Throw std::invalid_argument unless there are four.
    explicit IPv4Address(std::span<const std::byte> bytes);
    explicit IPv4Address(std::span<const std::uint8_t> octets);
    /// Throws as from_string() does.
    explicit IPv4Address(TextArgument text);

    /// In host order.
    std::uint32_t to_uint() const noexcept;

    bool is_benchmarking() const noexcept override;
    bool is_documentation() const noexcept override;
    bool is_loopback() const noexcept override;
    bool is_link_local() const noexcept override;
    bool is_unicast() const noexcept override;
    bool is_multicast() const noexcept override;
    /// 10.0.0.0/8, 172.16.0.0/12, 192.168.0.0/16 (RFC 1918).
    bool is_private() const noexcept;
    /// 255.255.255.255 (RFC 919).
    bool is_broadcast() const noexcept;

    /// Four decimal numbers: 192.168.1.1.
    std::string to_string() const override;
    /// Reads at most 15 characters as a scan of four numbers joined by "." reads them: each of up
    /// to three characters, a sign and leading zeros included, and blanks before each and at the
    /// end.
    void from_string(TextArgument text) override;
};

}  // namespace nuv

template <>
struct std::hash<nuv::IPv4Address> : std::hash<nuv::IPAddress> {};
