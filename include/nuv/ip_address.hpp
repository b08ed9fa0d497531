// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "nuv/export.hpp"
#include "nuv/serialization_context.hpp"
#include "nuv/text_argument.hpp"

namespace nuv {

namespace serialization {
class YAJLNode;
class YAJLStream;
}  // namespace serialization

/// An IP address of either version: octets in network order.
///
/// Ordered: every IPv4 address before every IPv6 address, within a version by octets. Constants are
/// `constinit const`.
class NUV_EXPORT IPAddress {
public:
    enum class Version : std::uint8_t { V4 = 0, V6 = 1 };

    constexpr virtual ~IPAddress() = default;

    virtual std::unique_ptr<IPAddress> clone() const = 0;
    virtual Version get_version() const noexcept = 0;
    /// 4 or 16.
    virtual std::size_t num_octets() const noexcept = 0;
    /// The unspecified address of the same version.
    virtual std::unique_ptr<IPAddress> make_default() const = 0;

    /// 198.18.0.0/15 (RFC 2544), 2001:2::/48 (RFC 5180).
    virtual bool is_benchmarking() const noexcept = 0;
    /// 192.0.2.0/24, 198.51.100.0/24, 203.0.113.0/24 (RFC 5737), 2001:db8::/32 (RFC 3849).
    virtual bool is_documentation() const noexcept = 0;
    /// 127.0.0.0/8 (RFC 1122), ::1 (RFC 4291).
    virtual bool is_loopback() const noexcept = 0;
    /// 169.254.0.0/16 (RFC 3927), fe80::/10 (RFC 4291).
    virtual bool is_link_local() const noexcept = 0;
    /// Neither multicast nor, for IPv4, the limited broadcast.
    virtual bool is_unicast() const noexcept = 0;
    /// 224.0.0.0/4 (RFC 5771), ff00::/8 (RFC 4291).
    virtual bool is_multicast() const noexcept = 0;
    /// 0.0.0.0, ::.
    virtual bool is_unspecified() const noexcept = 0;

    /// The octets, copied and in place.
    virtual std::vector<std::byte> to_bytes() const = 0;
    virtual std::vector<std::uint8_t> to_bytes_raw() const = 0;
    virtual std::span<const std::byte> as_bytes_span() const noexcept = 0;
    virtual std::span<std::byte> as_bytes_span() noexcept = 0;
    virtual std::span<const std::uint8_t> as_bytes_span_raw() const noexcept = 0;
    virtual std::span<std::uint8_t> as_bytes_span_raw() noexcept = 0;

    virtual std::string to_string() const = 0;
    /// Replaces the octets by what `text` says. Throws std::invalid_argument, and then changes
    /// nothing.
    virtual void from_string(TextArgument text) = 0;

    /// Throw std::bad_cast if `other` is of the other version.
    virtual bool is_equal(const IPAddress& other) const = 0;
    virtual bool is_lt(const IPAddress& other) const = 0;
    virtual bool is_lt_eq(const IPAddress& other) const = 0;

    bool is_v4() const noexcept { return get_version() == Version::V4; }
    bool is_v6() const noexcept { return get_version() == Version::V6; }

    /// Three dots and no colon are read as IPv4; two to seven colons, with three dots or none, as
    /// IPv6. Throws std::invalid_argument for every other text, and what from_string() throws.
    static std::unique_ptr<IPAddress> guess_version_and_parse(TextArgument text);

protected:
    constexpr IPAddress() = default;
    constexpr IPAddress(const IPAddress&) = default;
    constexpr IPAddress(IPAddress&&) = default;
    constexpr IPAddress& operator=(const IPAddress&) = default;
    constexpr IPAddress& operator=(IPAddress&&) = default;
};

/// "V4", "V6". Throws std::invalid_argument "New IP address version not handled" for other values,
/// as operator<< does.
NUV_EXPORT std::string enum_to_string(IPAddress::Version value);
NUV_EXPORT bool string_to_enum(std::string_view text, IPAddress::Version& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, IPAddress::Version value);

NUV_EXPORT bool operator==(const IPAddress& a, const IPAddress& b);
NUV_EXPORT std::strong_ordering operator<=>(const IPAddress& a, const IPAddress& b);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const IPAddress& address);

/// The unspecified address of the version that the member "version" of `node` names. Throws
/// SerializationException.
NUV_EXPORT std::unique_ptr<IPAddress> create_ip_address(serialization::YAJLNode& node,
                                                        serialization::SerializationContext& ctx);

/// Writes `address` as two members of the object that is open: {"version":"V4","value":"1.2.3.4"},
/// the text of the value with `suffix` behind it. Throws SerializationException.
NUV_EXPORT void serialize_ip_address(serialization::YAJLStream& stream,
                                     serialization::SerializationContext& ctx,
                                     const IPAddress& address, std::string_view suffix = {});
/// Reads these members of `node`. Throws SerializationException.
NUV_EXPORT std::unique_ptr<IPAddress> deserialize_ip_address(
    serialization::YAJLNode& node, serialization::SerializationContext& ctx);
/// The same where more than an address stands in the value: `value` is its text, and the address the
/// unspecified one of its version.
NUV_EXPORT std::unique_ptr<IPAddress> deserialize_ip_address(
    serialization::YAJLNode& node, serialization::SerializationContext& ctx, std::string& value);

namespace impl {

/// What both versions share: `Address` is made of N octets.
template <class Address, std::size_t N>
class IPAddressOctets : public IPAddress {
public:
    std::unique_ptr<IPAddress> clone() const final {
        return std::make_unique<Address>(static_cast<const Address&>(*this));
    }
    Version get_version() const noexcept final { return N == 4 ? Version::V4 : Version::V6; }
    std::size_t num_octets() const noexcept final { return N; }
    std::unique_ptr<IPAddress> make_default() const final { return std::make_unique<Address>(); }
    bool is_unspecified() const noexcept final { return octets_ == std::array<std::uint8_t, N>{}; }

    std::vector<std::byte> to_bytes() const final {
        const auto bytes = as_bytes_span();
        return {bytes.begin(), bytes.end()};
    }
    std::vector<std::uint8_t> to_bytes_raw() const final {
        return {octets_.begin(), octets_.end()};
    }
    std::span<const std::byte> as_bytes_span() const noexcept final {
        return std::as_bytes(std::span(octets_));
    }
    std::span<std::byte> as_bytes_span() noexcept final {
        return std::as_writable_bytes(std::span(octets_));
    }
    std::span<const std::uint8_t> as_bytes_span_raw() const noexcept final { return octets_; }
    std::span<std::uint8_t> as_bytes_span_raw() noexcept final { return octets_; }

    bool is_equal(const IPAddress& other) const final { return octets_ == octets_of(other); }
    bool is_lt(const IPAddress& other) const final { return octets_ < octets_of(other); }
    bool is_lt_eq(const IPAddress& other) const final { return octets_ <= octets_of(other); }

    void swap(Address& other) noexcept { octets_.swap(other.octets_); }

protected:
    constexpr IPAddressOctets() = default;
    constexpr explicit IPAddressOctets(const std::array<std::uint8_t, N>& octets) noexcept
        : octets_(octets) {}
    /// Throws std::invalid_argument(`failure`) unless there are N.
    IPAddressOctets(std::span<const std::uint8_t> octets, const char* failure) {
        if (octets.size() != N) {
            throw std::invalid_argument(failure);
        }
        std::ranges::copy(octets, octets_.begin());
    }

    bool starts_with(std::initializer_list<std::uint8_t> octets) const noexcept {
        return std::equal(octets.begin(), octets.end(), octets_.begin());
    }

    std::array<std::uint8_t, N> octets_{};

private:
    static const std::array<std::uint8_t, N>& octets_of(const IPAddress& other) {
        return dynamic_cast<const Address&>(other).octets_;
    }
};

}  // namespace impl

}  // namespace nuv

/// Of the octets.
template <>
struct std::hash<nuv::IPAddress> {
    std::size_t operator()(const nuv::IPAddress& address) const noexcept {
        const auto octets = address.as_bytes_span_raw();
        return std::hash<std::string_view>()(
            {reinterpret_cast<const char*>(octets.data()), octets.size()});
    }
};
