// SPDX-License-Identifier: Apache-2.0
#include "nuv/prefixed_ip_address.hpp"

#include <algorithm>
#include <bit>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "internal/quote.hpp"
#include "internal/text_scan.hpp"
#include "nuv/ipv4_address.hpp"

namespace nuv {

namespace {

constexpr unsigned OCTET_BITS = 8;

std::unique_ptr<IPAddress> clone_of(const std::unique_ptr<IPAddress>& address) {
    return address ? address->clone() : nullptr;
}

/// 128 at most, of an IPv6 address.
std::uint8_t count_ones(const IPAddress& mask) {
    int ones = 0;
    for (const std::uint8_t octet : mask.as_bytes_span_raw()) {
        ones += std::popcount(octet);
    }
    return static_cast<std::uint8_t>(ones);
}

struct PrefixText {
    std::string_view address;
    std::uint8_t prefix_length;
};

/// What stands before and behind the first "/". Throws std::invalid_argument.
PrefixText split(std::string_view text) {
    const auto refuse = [&](const char* reason) {
        throw std::invalid_argument("Expected prefixed IP address but got " + impl::quote(text) +
                                    " which does not contain " + reason);
    };
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos) {
        refuse("expected '/'");
    }
    const std::string_view behind = text.substr(slash + 1);
    if (behind.empty()) {
        refuse("a prefix length");
    }
    // Deliberate: a scan of 32 bits, of which 8 are kept; a larger number is 255.
    std::uint32_t number = 0;
    if (!impl::TextScan(behind).number<10>(number)) {
        throw std::invalid_argument("Could not parse prefix length from " + impl::quote(behind));
    }
    return {text.substr(0, slash), static_cast<std::uint8_t>(number)};
}

}  // namespace

PrefixedIPAddress::PrefixedIPAddress(std::unique_ptr<IPAddress> address, std::uint8_t prefix_length)
    : address_(std::move(address)), prefix_length_(0) {
    if (!address_) {
        throw std::invalid_argument("Can't pass a nullptr as an IP address to PrefixedIPAddress");
    }
    set_prefix_length(prefix_length);
}

PrefixedIPAddress::PrefixedIPAddress(const IPAddress& address, std::uint8_t prefix_length)
    : PrefixedIPAddress(address.clone(), prefix_length) {}

PrefixedIPAddress::PrefixedIPAddress(const IPAddress& address, const IPAddress& mask)
    : PrefixedIPAddress(address, count_ones(mask)) {}

PrefixedIPAddress::~PrefixedIPAddress() = default;
PrefixedIPAddress::PrefixedIPAddress(PrefixedIPAddress&&) noexcept = default;
PrefixedIPAddress& PrefixedIPAddress::operator=(PrefixedIPAddress&&) noexcept = default;

PrefixedIPAddress::PrefixedIPAddress(const PrefixedIPAddress& other)
    : JSONSerializable(other),
      address_(clone_of(other.address_)),
      prefix_length_(other.prefix_length_) {}

PrefixedIPAddress& PrefixedIPAddress::operator=(const PrefixedIPAddress& other) {
    return *this = PrefixedIPAddress(other);
}

const IPAddress& PrefixedIPAddress::get_address() const {
    if (!address_) {
        throw std::logic_error("A PrefixedIPAddress that was moved from has no IP address");
    }
    return *address_;
}

void PrefixedIPAddress::set_address(const IPAddress& address) { address_ = address.clone(); }

void PrefixedIPAddress::set_prefix_length(std::uint8_t prefix_length) {
    const std::size_t maximum = OCTET_BITS * get_address().num_octets();
    if (prefix_length > maximum) {
        // No blank after "IP": log readers match it.
        throw std::invalid_argument("Prefix length " + std::to_string(prefix_length) +
                                    " is greater than length of the IP" +
                                    enum_to_string(get_address().get_version()) + " address (" +
                                    std::to_string(maximum) + ")");
    }
    prefix_length_ = prefix_length;
}

std::uint8_t PrefixedIPAddress::mask_octet(std::size_t index) const noexcept {
    const std::size_t before = OCTET_BITS * index;
    const std::size_t bits =
        prefix_length_ > before ? std::min<std::size_t>(prefix_length_ - before, OCTET_BITS) : 0;
    return static_cast<std::uint8_t>(0xFF00U >> bits);
}

std::unique_ptr<IPAddress> PrefixedIPAddress::make_mask(bool host) const {
    auto mask = get_address().make_default();
    std::size_t index = 0;
    for (std::uint8_t& octet : mask->as_bytes_span_raw()) {
        octet = static_cast<std::uint8_t>(mask_octet(index++) ^ (host ? 0xFFU : 0U));
    }
    return mask;
}

std::unique_ptr<IPAddress> PrefixedIPAddress::get_netmask() const { return make_mask(false); }

std::unique_ptr<IPAddress> PrefixedIPAddress::get_host_identifier_mask() const {
    return make_mask(true);
}

void PrefixedIPAddress::to_network_address() {
    static_cast<void>(get_address());
    std::size_t index = 0;
    for (std::uint8_t& octet : address_->as_bytes_span_raw()) {
        octet &= mask_octet(index++);
    }
}

PrefixedIPAddress PrefixedIPAddress::get_network_address() const {
    PrefixedIPAddress network(*this);
    network.to_network_address();
    return network;
}

bool PrefixedIPAddress::is_network_address() const { return *this == get_network_address(); }

bool PrefixedIPAddress::contains(const IPAddress& other) const {
    if (get_address().get_version() != other.get_version()) {
        return false;
    }
    const auto own = get_address().as_bytes_span_raw();
    const auto octets = other.as_bytes_span_raw();
    for (std::size_t i = 0; i < own.size() && mask_octet(i) != 0; ++i) {
        if (((own[i] ^ octets[i]) & mask_octet(i)) != 0) {
            return false;
        }
    }
    return true;
}

bool PrefixedIPAddress::contains_network(const PrefixedIPAddress& other) const {
    return contains(other.get_address()) && prefix_length_ <= other.prefix_length_;
}

std::string PrefixedIPAddress::suffix() const { return '/' + std::to_string(prefix_length_); }

std::string PrefixedIPAddress::to_string() const { return get_address().to_string() + suffix(); }

PrefixedIPAddress PrefixedIPAddress::guess_version_and_parse(TextArgument text) {
    const auto [address, prefix_length] = split(text);
    return {IPAddress::guess_version_and_parse(address), prefix_length};
}

bool operator==(const PrefixedIPAddress& a, const PrefixedIPAddress& b) {
    return std::is_eq(a <=> b);
}

std::strong_ordering operator<=>(const PrefixedIPAddress& a, const PrefixedIPAddress& b) {
    if (!a.address_ || !b.address_) {
        return static_cast<bool>(a.address_) <=> static_cast<bool>(b.address_);
    }
    const auto by_address = *a.address_ <=> *b.address_;
    return std::is_neq(by_address) ? by_address : b.prefix_length_ <=> a.prefix_length_;
}

std::ostream& operator<<(std::ostream& os, const PrefixedIPAddress& address) {
    return os << address.to_string();
}

void PrefixedIPAddress::serialize_impl(serialization::YAJLStream& stream,
                                       serialization::SerializationContext& ctx) const {
    try {
        serialize_ip_address(stream, ctx, get_address(), suffix());
    } catch (const serialization::SerializationException& error) {
        throw serialization::SerializationException("Serialization of PrefixedIPAddress " +
                                                    impl::quote(to_string()) +
                                                    " failed: " + error.what());
    }
}

void PrefixedIPAddress::deserialize_impl(serialization::YAJLNode& node,
                                         serialization::SerializationContext& ctx) {
    std::string text;
    auto address = deserialize_ip_address(node, ctx, text);
    const auto refuse = [](const std::string& reason) {
        throw serialization::SerializationException(
            "Deserialization of PrefixedIPAddress failed: " + reason);
    };
    PrefixText parts{};
    try {
        parts = split(text);
    } catch (const std::invalid_argument& error) {
        refuse(error.what());
    }
    try {
        address->from_string(parts.address);
    } catch (const std::invalid_argument& error) {
        refuse("Could not parse " + impl::quote(parts.address) + ": " + error.what());
    }
    *this = PrefixedIPAddress(std::move(address), parts.prefix_length);
}

}  // namespace nuv

namespace nuv::serialization {

PrefixedIPAddress JSONSerializeFactory<PrefixedIPAddress>::make_default(YAJLNode&,
                                                                        SerializationContext&,
                                                                        const std::string&) {
    return {IPv4Address::UNSPECIFIED, std::uint8_t{0}};
}

PrefixedIPAddress BinarySerializeFactory<PrefixedIPAddress>::make_default(std::istream&,
                                                                          SerializationContext&) {
    return {IPv4Address::UNSPECIFIED, std::uint8_t{0}};
}

}  // namespace nuv::serialization
