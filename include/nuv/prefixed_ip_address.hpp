// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "nuv/binary_serialize_factory.hpp"
#include "nuv/export.hpp"
#include "nuv/ip_address.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/json_serialize_factory.hpp"
#include "nuv/text_argument.hpp"

namespace nuv {

/// An IP address with a prefix length in bits (CIDR notation, RFC 4632 and RFC 4291, 2.3): a
/// network, or the address of an interface in it.
///
/// Ordered by address; of equal addresses the one with the longer prefix comes first: a walk in
/// order meets the more specific network before the one around it.
///
/// What was moved from holds no address: it compares equal to its like and less than every other,
/// and can be copied, replaced, given an address and destroyed. What needs an address throws
/// std::logic_error.
class NUV_EXPORT PrefixedIPAddress : public serialization::JSONSerializable {
public:
    /// The first throws std::invalid_argument for null, all of them as set_prefix_length() does.
    PrefixedIPAddress(std::unique_ptr<IPAddress> address, std::uint8_t prefix_length);
    PrefixedIPAddress(const IPAddress& address, std::uint8_t prefix_length);
    /// The prefix is as long as `mask` has one bits, wherever they are.
    PrefixedIPAddress(const IPAddress& address, const IPAddress& mask);

    ~PrefixedIPAddress() override;
    PrefixedIPAddress(const PrefixedIPAddress& other);
    PrefixedIPAddress& operator=(const PrefixedIPAddress& other);
    PrefixedIPAddress(PrefixedIPAddress&&) noexcept;
    PrefixedIPAddress& operator=(PrefixedIPAddress&&) noexcept;

    const IPAddress& get_address() const;
    std::uint8_t get_prefix_length() const noexcept { return prefix_length_; }
    /// The prefix length stays, also where it is longer than the new address; such a prefix covers
    /// all of the address.
    void set_address(const IPAddress& address);
    /// Throws std::invalid_argument where it is longer than the address: 32 or 128.
    void set_prefix_length(std::uint8_t prefix_length);

    /// The first bits set, as many as the prefix is long; and the others.
    std::unique_ptr<IPAddress> get_netmask() const;
    std::unique_ptr<IPAddress> get_host_identifier_mask() const;

    /// Clears what is behind the prefix.
    void to_network_address();
    PrefixedIPAddress get_network_address() const;
    bool is_network_address() const;

    /// False for every address and network of the other version.
    bool contains(const IPAddress& other) const;
    bool contains_network(const PrefixedIPAddress& other) const;

    /// 192.168.1.77/24.
    std::string to_string() const;
    /// Reads that text, the address as IPAddress::guess_version_and_parse() does, the prefix length
    /// as a scan of a number of 8 bits: what stands behind the number is not looked at, and 264 is
    /// 8. Throws std::invalid_argument.
    static PrefixedIPAddress guess_version_and_parse(TextArgument text);

    NUV_EXPORT friend bool operator==(const PrefixedIPAddress& a, const PrefixedIPAddress& b);
    NUV_EXPORT friend std::strong_ordering operator<=>(const PrefixedIPAddress& a,
                                                       const PrefixedIPAddress& b);

    /// {"version":"V4","value":"192.168.1.77/24"}, read by the rules of the texts. Reading throws
    /// SerializationException, and std::invalid_argument where the prefix is too long; in a list
    /// that one, too, is a SerializationException.
    void serialize_impl(serialization::YAJLStream& stream,
                        serialization::SerializationContext& ctx) const override;
    void deserialize_impl(serialization::YAJLNode& node,
                          serialization::SerializationContext& ctx) override;

private:
    /// The bits of octet `index` that belong to the prefix.
    std::uint8_t mask_octet(std::size_t index) const noexcept;
    /// An address of the same version, made of one octet for each index.
    std::unique_ptr<IPAddress> make_mask(bool host) const;
    /// "/24", which stands behind the address.
    std::string suffix() const;

    std::unique_ptr<IPAddress> address_;
    std::uint8_t prefix_length_;
};

NUV_EXPORT std::ostream& operator<<(std::ostream& os, const PrefixedIPAddress& address);

}  // namespace nuv

namespace nuv::serialization {

/// 0.0.0.0/0.
template <>
struct NUV_EXPORT JSONSerializeFactory<PrefixedIPAddress> {
    static PrefixedIPAddress make_default(YAJLNode& node, SerializationContext& ctx,
                                          const std::string& key);
};

/// 0.0.0.0/0.
template <>
struct NUV_EXPORT BinarySerializeFactory<PrefixedIPAddress> {
    static PrefixedIPAddress make_default(std::istream& is, SerializationContext& ctx);
};

}  // namespace nuv::serialization
