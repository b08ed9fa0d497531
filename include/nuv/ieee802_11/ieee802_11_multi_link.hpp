// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>
#include <memory>
#include <optional>

#include "nuv/export.hpp"
#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_element_base.hpp"
#include "nuv/ieee802_11/ieee802_11_element_sequence.hpp"
#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Multi-Link (ID 255, extension 107; IEEE Std 802.11be-2024, 9.4.2.322): the other links of a
/// station or access point. The Basic variant is typed, of the others everything behind the control
/// field is kept as it came. Integers are least significant octet first. An element of more than
/// 255 octets is continued by Fragment elements (ID 242).
///
/// Reading throws SerializationException "Invalid ID", "Unexpected ID" for another extension, "Only
/// Basic Multi-Link elements allowed in Neighbor Report", and "Invalid length" where a length inside
/// does not fit.
class NUV_EXPORT IEEE802_11_MultiLink : public IEEE802_11_Element_Base {
public:
    static constexpr auto ELEMENT_ID = IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION;
    static constexpr auto EXTENSION_ID = IEEE802_11_Element_ID_Extension::MULTI_LINK;

    /// Where the element stands: in a frame, or as a subelement (ID 201, no extension octet) of a
    /// Neighbor Report.
    enum class Mode : std::uint8_t { ELEMENT, NEIGHBOR_REPORT };
    /// What the element is for; 5 to 7 are reserved.
    enum class Type : std::uint8_t {
        BASIC = 0,
        PROBE_REQUEST = 1,
        RECONFIGURATION = 2,
        TDLS = 3,
        PRIORITY_ACCESS = 4,
    };

    using Surplus = SmallVector<std::uint8_t, 8>;

    /// A Basic element without optional fields and links.
    IEEE802_11_MultiLink() = default;
    explicit IEEE802_11_MultiLink(Mode mode) : mode_(mode) {}

    Mode get_mode() const { return mode_; }
    void set_mode(Mode mode) { mode_ = mode; }

    /// Multi-Link Control: type in bits 0 to 2, in 4 to 10 which of the fields below are there.
    const std::bitset<16>& get_control() const { return control_; }
    Type get_multi_link_type() const { return static_cast<Type>(control_.to_ulong() & type_mask); }
    bool is_basic() const { return get_multi_link_type() == Type::BASIC; }

    // Common Info of a Basic element. Each getter gives none where the field is absent; each setter
    // makes it present, or absent with none; of another type than Basic it throws std::logic_error.
    const MACAddress& get_mld_mac_address() const { return mld_mac_address_; }
    void set_mld_mac_address(const MACAddress& address) {
        require_basic();
        mld_mac_address_ = address;
    }
    /// The link on which the sender transmits, 0 to 14. Of what was read also the high four bits,
    /// which are reserved; setting throws std::invalid_argument beyond 15.
    std::optional<std::uint8_t> get_link_id() const { return if_present(link_id, link_id_); }
    void set_link_id(std::optional<std::uint8_t> value);
    std::optional<std::uint8_t> get_bss_parameters_change_count() const {
        return if_present(change_count, bss_parameters_change_count_);
    }
    void set_bss_parameters_change_count(std::optional<std::uint8_t> value) {
        set(change_count, bss_parameters_change_count_, value);
    }
    /// Duration in units of 32 us in bits 0 to 7, OFDM energy detection threshold in dBm plus 72 in 8
    /// to 11, greatest number of TXOPs less 1 in 12 to 15 (15: no limit).
    std::optional<std::uint16_t> get_medium_synchronization_delay() const {
        return if_present(medium_delay, medium_synchronization_delay_);
    }
    void set_medium_synchronization_delay(std::optional<std::uint16_t> value) {
        set(medium_delay, medium_synchronization_delay_, value);
    }
    /// Bit numbers of this and the following are those of the standard's fields.
    std::optional<std::bitset<16>> get_eml_capabilities() const {
        return if_present(eml, eml_capabilities_);
    }
    void set_eml_capabilities(const std::optional<std::bitset<16>>& value) {
        set(eml, eml_capabilities_, value);
    }
    std::optional<std::bitset<16>> get_mld_capabilities() const {
        return if_present(mld, mld_capabilities_);
    }
    void set_mld_capabilities(const std::optional<std::bitset<16>>& value) {
        set(mld, mld_capabilities_, value);
    }
    std::optional<std::uint8_t> get_ap_mld_id() const { return if_present(ap_mld_id, ap_mld_id_); }
    void set_ap_mld_id(std::optional<std::uint8_t> value) { set(ap_mld_id, ap_mld_id_, value); }
    std::optional<std::bitset<16>> get_extended_mld_capabilities() const {
        return if_present(extended_mld, extended_mld_capabilities_);
    }
    void set_extended_mld_capabilities(const std::optional<std::bitset<16>>& value) {
        set(extended_mld, extended_mld_capabilities_, value);
    }
    /// Octets that the Common Info's length counts behind these fields: later editions append
    /// there. Where the length cannot count them, writing throws "Invalid length".
    const Surplus& get_common_info_surplus() const { return common_info_surplus_; }
    void set_common_info_surplus(const Surplus& octets) {
        require_basic();
        common_info_surplus_ = octets;
    }

    /// Link Info of a Basic element: IEEE802_11_PerSTAProfile, everything else raw.
    const IEEE802_11_ElementSequence& get_link_info() const { return link_info_; }
    IEEE802_11_ElementSequence& get_link_info() { return link_info_; }

    /// What is behind the control field of another type than Basic.
    const IEEE802_11_Body& get_body() const { return body_; }
    /// Makes the element one of another type, given in `control`, without Common Info and Link Info.
    /// Throws std::invalid_argument for Basic.
    void set_body(const std::bitset<16>& control, const IEEE802_11_Body& body);

    /// The shape of EHT Capabilities in profiles that inherit their HE Capabilities from the frame.
    void inherit_eht_maps(const IEEE802_11_EHTMaps& maps) { eht_maps_ = maps; }
    const std::optional<IEEE802_11_EHTMaps>& inherited_eht_maps() const { return eht_maps_; }

    std::uint32_t get_length() const override;
    /// ELEMENT_ID_EXTENSION, or BASIC_MULTI_LINK_SUBELEMENT in a Neighbor Report.
    IEEE802_11_Element_ID get_type() const override;
    IEEE802_11_Element_ID_Extension get_extension_type() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    void check_fields() const override;

protected:
    void check_id(std::uint8_t id) const override;
    void check_extension(std::uint8_t extension) const override;
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;
    std::optional<std::uint8_t> fragment_id() const override;

private:
    struct Layout;

    // Bits of the control field.
    static constexpr unsigned type_bits = 3;
    static constexpr unsigned long type_mask = 0x7;
    static constexpr std::size_t link_id = 4;
    static constexpr std::size_t change_count = 5;
    static constexpr std::size_t medium_delay = 6;
    static constexpr std::size_t eml = 7;
    static constexpr std::size_t mld = 8;
    static constexpr std::size_t ap_mld_id = 9;
    static constexpr std::size_t extended_mld = 10;

    template <class T>
    std::optional<T> if_present(std::size_t bit, const T& value) const {
        return is_basic() && control_[bit] ? std::optional(value) : std::nullopt;
    }
    template <class T>
    void set(std::size_t bit, T& field, const std::optional<T>& value) {
        require_basic();
        control_[bit] = value.has_value();
        field = value.value_or(T{});
    }

    void require_basic() const;
    std::unique_ptr<IEEE802_11_Element_Base> make_subelement(
        IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension) const;

    Mode mode_ = Mode::ELEMENT;
    std::bitset<16> control_;
    MACAddress mld_mac_address_;
    std::uint8_t link_id_ = 0;
    std::uint8_t bss_parameters_change_count_ = 0;
    std::uint16_t medium_synchronization_delay_ = 0;
    std::bitset<16> eml_capabilities_;
    std::bitset<16> mld_capabilities_;
    std::uint8_t ap_mld_id_ = 0;
    std::bitset<16> extended_mld_capabilities_;
    Surplus common_info_surplus_;
    IEEE802_11_ElementSequence link_info_;
    IEEE802_11_Body body_;
    std::optional<IEEE802_11_EHTMaps> eht_maps_;
};

}  // namespace nuv::ieee802_11
