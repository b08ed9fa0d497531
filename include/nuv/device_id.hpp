// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "nuv/binary_serializable.hpp"
#include "nuv/export.hpp"
#include "nuv/fixed_byte_buffer.hpp"
#include "nuv/interface_name.hpp"
#include "nuv/ip_address.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/text_argument.hpp"

/// @file
/// The identifiers by which neighbors know a device and its ports: IEEE 802.1AB (LLDP), 8.5.2 and
/// 8.5.3.

namespace nuv {

// Exported as template arguments: clang gives a template no more visibility than they have.

/// What a chassis identifier is. Texts are those of the LLDP MIB: "chassisComponent" and so on.
enum class NUV_EXPORT ChassisIDSubtype : std::uint8_t {
    CHASSIS_COMPONENT = 1,
    INTERFACE_ALIAS = 2,
    PORT_COMPONENT = 3,
    MAC_ADDRESS = 4,
    NETWORK_ADDRESS = 5,
    INTERFACE_NAME = 6,
    LOCALLY_ASSIGNED = 7,  ///< "local"
};
NUV_EXPORT std::string enum_to_string(ChassisIDSubtype value);
NUV_EXPORT bool string_to_enum(std::string_view text, ChassisIDSubtype& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, ChassisIDSubtype value);

/// What a port identifier is. The numbers are not those of a chassis.
enum class NUV_EXPORT PortIDSubtype : std::uint8_t {
    INTERFACE_ALIAS = 1,
    PORT_COMPONENT = 2,
    MAC_ADDRESS = 3,
    NETWORK_ADDRESS = 4,
    INTERFACE_NAME = 5,
    AGENT_CIRCUIT_ID = 6,
    LOCALLY_ASSIGNED = 7,  ///< "local"
};
NUV_EXPORT std::string enum_to_string(PortIDSubtype value);
NUV_EXPORT bool string_to_enum(std::string_view text, PortIDSubtype& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, PortIDSubtype value);

/// A chassis or port identifier: a subtype and 1 to 255 octets, by default the MAC address of
/// zeros. Always well formed: no subtype is reserved, a MAC address has six octets, a network
/// address is one of IPv4 or IPv6, its IANA address family (1 or 2) in the first octet.
///
/// Text and JSON: "macAddress=02:00:00:00:00:01", "networkAddress=fe80::1", "interfaceName=wlan0".
/// In the other subtypes, too, the octets are characters; a backslash and what is no visible ASCII
/// stands there as \xHH.
///
/// Binary form: the Chassis ID or Port ID TLV of an LLDPDU, that is, 7 bits of type and 9 of
/// length, most significant first, then the subtype and the octets.
///
/// Ordered by subtype, then by octets.
template <class SubtypeEnum>
class LLDPIdentifier : public serialization::BinarySerializable {
public:
    using Subtype = SubtypeEnum;
    static constexpr std::string_view TYPE_NAME =
        std::is_same_v<Subtype, ChassisIDSubtype> ? "ChassisID" : "PortID";
    static constexpr std::uint32_t MAX_OCTETS = 255;

    LLDPIdentifier() : LLDPIdentifier(of_mac_address(MACAddress())) {}
    /// Throws std::invalid_argument unless they are well formed.
    LLDPIdentifier(Subtype subtype, std::span<const std::uint8_t> octets);
    /// Throws std::invalid_argument when parse_string() would refuse `text`.
    explicit LLDPIdentifier(TextArgument text);
    /// Throws std::invalid_argument unless `value` is the text of that subtype's octets, which
    /// stands behind the "="; here a blank may stand for itself.
    static LLDPIdentifier of_value_text(Subtype subtype, TextArgument value);

    static LLDPIdentifier of_mac_address(const MACAddress& address);
    static LLDPIdentifier of_network_address(const IPAddress& address);
    /// Throws std::invalid_argument if `name` is empty.
    static LLDPIdentifier of_interface_name(const InterfaceName& name);

    Subtype get_subtype() const noexcept { return subtype_; }
    std::span<const std::uint8_t> get_octets() const noexcept { return octets_.span(); }
    /// None, or null, for another subtype.
    std::optional<MACAddress> get_mac_address() const;
    std::unique_ptr<IPAddress> get_network_address() const;

    std::string to_string() const;
    std::string value_to_string() const;
    /// Returns false, and stays what it was, for anything but the text form.
    bool parse_string(TextArgument text);

    bool operator==(const LLDPIdentifier& other) const noexcept {
        return subtype_ == other.subtype_ && octets_ == other.octets_;
    }
    std::strong_ordering operator<=>(const LLDPIdentifier& other) const noexcept {
        const auto by_subtype = subtype_ <=> other.subtype_;
        return std::is_neq(by_subtype) ? by_subtype : octets_ <=> other.octets_;
    }

    /// Reading throws SerializationException for another TLV and for an identifier that is not well
    /// formed; the object is then unchanged.
    void serialize_impl(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;

private:
    Subtype subtype_{};
    FixedByteBuffer<MAX_OCTETS> octets_;
};

extern template class NUV_EXPORT LLDPIdentifier<ChassisIDSubtype>;
extern template class NUV_EXPORT LLDPIdentifier<PortIDSubtype>;
using ChassisID = LLDPIdentifier<ChassisIDSubtype>;
using PortID = LLDPIdentifier<PortIDSubtype>;

NUV_EXPORT std::ostream& operator<<(std::ostream& os, const ChassisID& id);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const PortID& id);

/// A device, as one of its ports shows it to the neighbors there.
///
/// Text: "macAddress=02:00:00:00:00:01 interfaceName=wlan0", chassis first. Binary form: the two
/// TLVs with which every LLDPDU begins. JSON: an object of "chassis_id_subtype", "chassis_id",
/// "port_id_subtype" and "port_id", the identifiers without their subtype; a blank that is read there
/// stands for itself.
class NUV_EXPORT DeviceID : public serialization::BinarySerializable,
                            public serialization::JSONSerializable {
public:
    DeviceID() = default;
    DeviceID(const ChassisID& chassis_id, const PortID& port_id)
        : chassis_id_(chassis_id), port_id_(port_id) {}
    /// Throws std::invalid_argument when parse_string() would refuse `text`.
    explicit DeviceID(TextArgument text);

    const ChassisID& get_chassis_id() const noexcept { return chassis_id_; }
    const PortID& get_port_id() const noexcept { return port_id_; }

    std::string to_string() const;
    /// Returns false, and stays what it was, for anything but the text form.
    bool parse_string(TextArgument text);

    bool operator==(const DeviceID& other) const noexcept {
        return chassis_id_ == other.chassis_id_ && port_id_ == other.port_id_;
    }
    std::strong_ordering operator<=>(const DeviceID& other) const noexcept {
        const auto by_chassis = chassis_id_ <=> other.chassis_id_;
        return std::is_neq(by_chassis) ? by_chassis : port_id_ <=> other.port_id_;
    }

    /// Reading leaves the object unchanged when it throws SerializationException.
    void serialize_impl(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;
    void serialize_impl(serialization::YAJLStream& stream,
                        serialization::SerializationContext& ctx) const override;
    void deserialize_impl(serialization::YAJLNode& node,
                          serialization::SerializationContext& ctx) override;

private:
    ChassisID chassis_id_;
    PortID port_id_;
};

NUV_EXPORT std::ostream& operator<<(std::ostream& os, const DeviceID& id);

}  // namespace nuv

template <class Subtype>
struct std::hash<nuv::LLDPIdentifier<Subtype>> {
    std::size_t operator()(const nuv::LLDPIdentifier<Subtype>& id) const noexcept {
        return std::hash<std::string_view>()({reinterpret_cast<const char*>(id.get_octets().data()),
                                              id.get_octets().size()}) *
                   31 +
               static_cast<std::size_t>(id.get_subtype());
    }
};

template <>
struct std::hash<nuv::DeviceID> {
    std::size_t operator()(const nuv::DeviceID& id) const noexcept {
        return std::hash<nuv::ChassisID>()(id.get_chassis_id()) * 31 +
               std::hash<nuv::PortID>()(id.get_port_id());
    }
};
