// SPDX-License-Identifier: Apache-2.0
#include "nuv/device_id.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <ostream>
#include <stdexcept>
#include <vector>

#include "internal/enum_table.hpp"
#include "internal/no_valid_text.hpp"
#include "nuv/binary_serializable_type.hpp"
#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "nuv/json_serializer.hpp"

namespace nuv {

using serialization::BinarySerializableType;
using serialization::JSONSerializer;
using serialization::SerializationContext;
using serialization::SerializationException;

namespace impl {

template <>
struct EnumTexts<ChassisIDSubtype> {
    using enum ChassisIDSubtype;
    static constexpr EnumRow<ChassisIDSubtype> rows[] = {
        {CHASSIS_COMPONENT, "chassisComponent"},
        {INTERFACE_ALIAS, "interfaceAlias"},
        {PORT_COMPONENT, "portComponent"},
        {MAC_ADDRESS, "macAddress"},
        {NETWORK_ADDRESS, "networkAddress"},
        {INTERFACE_NAME, "interfaceName"},
        {LOCALLY_ASSIGNED, "local"},
        {OTHERWISE, "RESERVED ", RowKind::NUMBERED},
    };
};

template <>
struct EnumTexts<PortIDSubtype> {
    using enum PortIDSubtype;
    static constexpr EnumRow<PortIDSubtype> rows[] = {
        {INTERFACE_ALIAS, "interfaceAlias"}, {PORT_COMPONENT, "portComponent"},
        {MAC_ADDRESS, "macAddress"},         {NETWORK_ADDRESS, "networkAddress"},
        {INTERFACE_NAME, "interfaceName"},   {AGENT_CIRCUIT_ID, "agentCircuitId"},
        {LOCALLY_ASSIGNED, "local"},         {OTHERWISE, "RESERVED ", RowKind::NUMBERED},
    };
};

}  // namespace impl

NUV_DEFINE_ENUM_TEXTS(ChassisIDSubtype)
NUV_DEFINE_ENUM_TEXTS(PortIDSubtype)

namespace {

constexpr std::uint8_t FIRST_SUBTYPE = 1;  // of both enumerations
constexpr std::uint8_t LAST_SUBTYPE = 7;
constexpr unsigned TLV_LENGTH_BITS = 9;

/// IANA address family numbers.
constexpr std::uint8_t FAMILY_IPV4 = 1;
constexpr std::uint8_t FAMILY_IPV6 = 2;

template <class Subtype>
constexpr unsigned TLV_TYPE = std::is_same_v<Subtype, ChassisIDSubtype> ? 1 : 2;

/// What is wrong with an identifier; empty if nothing is.
template <class Subtype>
std::string problem_of(Subtype subtype, std::span<const std::uint8_t> octets) {
    const auto number = static_cast<std::uint8_t>(subtype);
    const std::string size = std::to_string(octets.size());
    if (number < FIRST_SUBTYPE || number > LAST_SUBTYPE) {
        return "subtype " + std::to_string(number) + " is reserved";
    }
    if (octets.empty() || octets.size() > LLDPIdentifier<Subtype>::MAX_OCTETS) {
        return "size " + size + " is not in the range [1, 255]";
    }
    if (subtype == Subtype::MAC_ADDRESS && octets.size() != MACAddress::MAC_ADDR_LEN) {
        return "a MAC address has 6 octets, not " + size;
    }
    if (subtype == Subtype::NETWORK_ADDRESS && !(octets[0] == FAMILY_IPV4 && octets.size() == 5) &&
        !(octets[0] == FAMILY_IPV6 && octets.size() == 17)) {
        return "a network address of family " + std::to_string(octets[0]) + " in " + size +
               " octets is neither IPv4 nor IPv6";
    }
    return {};
}

constexpr char SEPARATOR = ' ';

/// Whether a character stands for itself: not what separates, nor what introduces a number.
bool is_plain(char c) { return c > ' ' && c < 0x7F && c != '\\'; }

std::string escape(std::span<const std::uint8_t> octets) {
    constexpr std::string_view DIGITS = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t octet : octets) {
        if (is_plain(static_cast<char>(octet))) {
            text += static_cast<char>(octet);
        } else {
            text.append({'\\', 'x', DIGITS[octet >> 4U], DIGITS[octet & 0x0FU]});
        }
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> unescape(std::string_view text) {
    std::vector<std::uint8_t> octets;
    while (!text.empty()) {
        std::size_t length = 1;
        auto octet = static_cast<std::uint8_t>(text[0]);
        if (!is_plain(text[0]) && text[0] != SEPARATOR) {
            length = 4;
            const std::string_view digits = text.substr(0, length);
            const auto [end, error] =
                std::from_chars(digits.data() + std::min<std::size_t>(2, digits.size()),
                                digits.data() + digits.size(), octet, 16);
            if (!digits.starts_with("\\x") || digits.size() != length || error != std::errc() ||
                end != digits.data() + length) {
                return std::nullopt;
            }
        }
        octets.push_back(octet);
        text.remove_prefix(length);
    }
    return octets;
}

}  // namespace

template <class SubtypeEnum>
LLDPIdentifier<SubtypeEnum>::LLDPIdentifier(Subtype subtype, std::span<const std::uint8_t> octets)
    : subtype_(subtype) {
    const std::string problem = problem_of(subtype, octets);
    if (!problem.empty()) {
        throw std::invalid_argument(std::string(TYPE_NAME) + ": " + problem);
    }
    octets_.assign(octets);
}

template <class SubtypeEnum>
LLDPIdentifier<SubtypeEnum>::LLDPIdentifier(TextArgument text) {
    if (!parse_string(text)) {
        impl::throw_no_valid_text(text, TYPE_NAME);
    }
}

template <class SubtypeEnum>
LLDPIdentifier<SubtypeEnum> LLDPIdentifier<SubtypeEnum>::of_value_text(Subtype subtype,
                                                                       TextArgument value) {
    if (subtype == Subtype::MAC_ADDRESS) {
        return of_mac_address(MACAddress(value));
    }
    if (subtype == Subtype::NETWORK_ADDRESS) {
        return of_network_address(*IPAddress::guess_version_and_parse(value));
    }
    const auto octets = unescape(value);
    if (!octets) {
        impl::throw_no_valid_text(value, TYPE_NAME);
    }
    return {subtype, *octets};
}

template <class SubtypeEnum>
LLDPIdentifier<SubtypeEnum> LLDPIdentifier<SubtypeEnum>::of_mac_address(const MACAddress& address) {
    return {Subtype::MAC_ADDRESS, address.octets()};
}

template <class SubtypeEnum>
LLDPIdentifier<SubtypeEnum> LLDPIdentifier<SubtypeEnum>::of_network_address(
    const IPAddress& address) {
    std::vector<std::uint8_t> octets{address.is_v4() ? FAMILY_IPV4 : FAMILY_IPV6};
    const auto of_address = address.as_bytes_span_raw();
    octets.insert(octets.end(), of_address.begin(), of_address.end());
    return {Subtype::NETWORK_ADDRESS, octets};
}

template <class SubtypeEnum>
LLDPIdentifier<SubtypeEnum> LLDPIdentifier<SubtypeEnum>::of_interface_name(
    const InterfaceName& name) {
    return {Subtype::INTERFACE_NAME, name.span()};
}

template <class SubtypeEnum>
std::optional<MACAddress> LLDPIdentifier<SubtypeEnum>::get_mac_address() const {
    if (subtype_ != Subtype::MAC_ADDRESS) {
        return std::nullopt;
    }
    MACAddress::Octets octets{};
    std::ranges::copy(octets_, octets.begin());
    return MACAddress(octets);
}

template <class SubtypeEnum>
std::unique_ptr<IPAddress> LLDPIdentifier<SubtypeEnum>::get_network_address() const {
    if (subtype_ != Subtype::NETWORK_ADDRESS) {
        return nullptr;
    }
    const auto address = get_octets().subspan(1);
    if (get_octets()[0] == FAMILY_IPV4) {
        return std::make_unique<IPv4Address>(address);
    }
    return std::make_unique<IPv6Address>(address);
}

template <class SubtypeEnum>
std::string LLDPIdentifier<SubtypeEnum>::value_to_string() const {
    if (const auto mac = get_mac_address()) {
        return mac->to_string();
    }
    const auto address = get_network_address();
    return address ? address->to_string() : escape(get_octets());
}

template <class SubtypeEnum>
std::string LLDPIdentifier<SubtypeEnum>::to_string() const {
    return enum_to_string(subtype_) + '=' + value_to_string();
}

template <class SubtypeEnum>
bool LLDPIdentifier<SubtypeEnum>::parse_string(TextArgument text) {
    const std::size_t equals = text.find('=');
    Subtype subtype{};
    if (equals == std::string_view::npos || !string_to_enum(text.substr(0, equals), subtype)) {
        return false;
    }
    const std::string_view value = text.substr(equals + 1);
    const bool is_address = subtype == Subtype::MAC_ADDRESS || subtype == Subtype::NETWORK_ADDRESS;
    if (!is_address && value.find(SEPARATOR) != std::string_view::npos) {
        return false;
    }
    try {
        *this = of_value_text(subtype, value);
    } catch (const std::invalid_argument&) {
        return false;
    }
    return true;
}

template <class SubtypeEnum>
void LLDPIdentifier<SubtypeEnum>::serialize_impl(std::ostream& os,
                                                 SerializationContext& ctx) const {
    const auto header = TLV_TYPE<Subtype> << TLV_LENGTH_BITS | (1 + octets_.size());
    BinarySerializableType<std::uint16_t>::serialize(os, ctx, static_cast<std::uint16_t>(header));
    BinarySerializableType<Subtype>::serialize(os, ctx, subtype_);
    BinarySerializableType<std::span<const std::uint8_t>>::serialize(os, ctx, get_octets());
}

template <class SubtypeEnum>
void LLDPIdentifier<SubtypeEnum>::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    const auto refuse = [](const std::string& reason) {
        throw SerializationException("Deserialization of " + std::string(TYPE_NAME) +
                                     " failed: " + reason);
    };
    std::uint16_t header = 0;
    BinarySerializableType<std::uint16_t>::deserialize(is, ctx, header);
    const unsigned type = header >> TLV_LENGTH_BITS;
    const std::size_t length = header & ((1U << TLV_LENGTH_BITS) - 1U);
    if (type != TLV_TYPE<Subtype>) {
        refuse("TLV type " + std::to_string(type) + " is not " + std::to_string(TLV_TYPE<Subtype>));
    }
    if (length < 2 || length > 1 + MAX_OCTETS) {
        refuse("TLV length " + std::to_string(length) + " is not in the range [2, 256]");
    }
    Subtype subtype{};
    BinarySerializableType<Subtype>::deserialize(is, ctx, subtype);
    std::array<std::uint8_t, MAX_OCTETS> buffer{};
    const std::span octets = std::span(buffer).first(length - 1);
    impl::read_available(is, octets.data(), octets.size());
    impl::check_read(is, impl::octet_texts.deserialize);
    const std::string problem = problem_of(subtype, octets);
    if (!problem.empty()) {
        refuse(problem);
    }
    subtype_ = subtype;
    octets_.assign(octets);
}

template class LLDPIdentifier<ChassisIDSubtype>;
template class LLDPIdentifier<PortIDSubtype>;

std::ostream& operator<<(std::ostream& os, const ChassisID& id) { return os << id.to_string(); }
std::ostream& operator<<(std::ostream& os, const PortID& id) { return os << id.to_string(); }

DeviceID::DeviceID(TextArgument text) {
    if (!parse_string(text)) {
        impl::throw_no_valid_text(text, "DeviceID");
    }
}

std::string DeviceID::to_string() const {
    return chassis_id_.to_string() + SEPARATOR + port_id_.to_string();
}

bool DeviceID::parse_string(TextArgument text) {
    const std::size_t separator = text.find(SEPARATOR);
    DeviceID read;
    if (separator == std::string_view::npos ||
        !read.chassis_id_.parse_string(text.substr(0, separator)) ||
        !read.port_id_.parse_string(text.substr(separator + 1))) {
        return false;
    }
    *this = read;
    return true;
}

void DeviceID::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    chassis_id_.serialize_impl(os, ctx);
    port_id_.serialize_impl(os, ctx);
}

void DeviceID::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    DeviceID read;
    read.chassis_id_.deserialize_impl(is, ctx);
    read.port_id_.deserialize_impl(is, ctx);
    *this = read;
}

void DeviceID::serialize_impl(serialization::YAJLStream& stream, SerializationContext& ctx) const {
    JSONSerializer::serialize_impl(stream, ctx, "chassis_id_subtype", chassis_id_.get_subtype(),
                                   "chassis_id", chassis_id_.value_to_string(), "port_id_subtype",
                                   port_id_.get_subtype(), "port_id", port_id_.value_to_string());
}

void DeviceID::deserialize_impl(serialization::YAJLNode& node, SerializationContext& ctx) {
    ChassisIDSubtype chassis_subtype{};
    PortIDSubtype port_subtype{};
    std::string chassis, port;
    JSONSerializer::deserialize(node, ctx, "chassis_id_subtype", chassis_subtype);
    JSONSerializer::deserialize(node, ctx, "chassis_id", chassis);
    JSONSerializer::deserialize(node, ctx, "port_id_subtype", port_subtype);
    JSONSerializer::deserialize(node, ctx, "port_id", port);
    try {
        *this = DeviceID(ChassisID::of_value_text(chassis_subtype, chassis),
                         PortID::of_value_text(port_subtype, port));
    } catch (const std::invalid_argument& error) {
        throw SerializationException(std::string("Deserialization of DeviceID failed: ") +
                                     error.what());
    }
}

std::ostream& operator<<(std::ostream& os, const DeviceID& id) { return os << id.to_string(); }

}  // namespace nuv
