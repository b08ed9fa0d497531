// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>
#include <memory>
#include <optional>

#include "nuv/export.hpp"
#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/ieee802_11/ieee802_11_element_sequence.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Per-STA Profile subelement (ID 0) of a Basic Multi-Link element (IEEE Std 802.11be-2024,
/// 9.4.2.322.2.4): one more link of the station that sends an association request. Integers are
/// least significant octet first. A profile of more than 255 octets is continued by Fragment
/// subelements (ID 254).
///
/// Reading throws SerializationException "Invalid length" where a length inside does not fit.
class NUV_EXPORT IEEE802_11_PerSTAProfile : public IEEE802_11_Element<IEEE802_11_Element_ID::SSID> {
public:
    using Surplus = SmallVector<std::uint8_t, 8>;

    /// A link ID that denotes no link.
    static constexpr std::uint8_t NO_LINK = 15;

    IEEE802_11_PerSTAProfile() = default;
    /// A profile for this link (0 to 14), without anything else.
    explicit IEEE802_11_PerSTAProfile(std::uint8_t link_id) { set_link_id(link_id); }

    /// STA Control: link ID in bits 0 to 3, 4 says that the profile is complete, 5 to 9 and 11 which
    /// of the fields below are there, 10 that the NSTR bitmap has two octets.
    const std::bitset<16>& get_sta_control() const { return sta_control_; }
    /// 0 to 14, or NO_LINK.
    std::uint8_t get_link_id() const {
        return static_cast<std::uint8_t>(sta_control_.to_ulong() & link_id_mask);
    }
    /// Throws std::invalid_argument beyond 15.
    void set_link_id(std::uint8_t link_id);
    bool is_complete() const { return sta_control_[complete]; }
    void set_complete(bool value) { sta_control_[complete] = value; }

    // STA Info. Each getter gives none where the field is absent; each setter makes it present, or
    // absent with none.
    std::optional<MACAddress> get_sta_mac_address() const {
        return if_present(mac_address, sta_mac_address_);
    }
    void set_sta_mac_address(const std::optional<MACAddress>& value) {
        set(mac_address, sta_mac_address_, value);
    }
    /// In time units of 1024 us.
    std::optional<std::uint16_t> get_beacon_interval() const {
        return if_present(beacon_interval, beacon_interval_);
    }
    void set_beacon_interval(std::optional<std::uint16_t> value) {
        set(beacon_interval, beacon_interval_, value);
    }
    /// Of the link's TSF timer to the one of the transmitting link, in units of 2 us.
    std::optional<std::int64_t> get_tsf_offset() const {
        return if_present(tsf_offset, static_cast<std::int64_t>(tsf_offset_));
    }
    void set_tsf_offset(std::optional<std::int64_t> value) {
        mark(tsf_offset, value.has_value());
        tsf_offset_ = static_cast<std::uint64_t>(value.value_or(0));
    }
    /// Beacons until the next that announces buffered group frames, and from one such to the next.
    struct DTIMInfo {
        std::uint8_t count = 0;
        std::uint8_t period = 0;
        bool operator==(const DTIMInfo&) const = default;
    };
    std::optional<DTIMInfo> get_dtim_info() const {
        return if_present(dtim_info, DTIMInfo{dtim_count_, dtim_period_});
    }
    void set_dtim_info(const std::optional<DTIMInfo>& value) {
        mark(dtim_info, value.has_value());
        dtim_count_ = value ? value->count : 0;
        dtim_period_ = value ? value->period : 0;
    }
    /// Bit n: this link and link n cannot transmit and receive at the same time.
    std::optional<std::uint16_t> get_nstr_indication_bitmap() const {
        return if_present(nstr_indication,
                          static_cast<std::uint16_t>(nstr_bitmap_high_ << 8U | nstr_bitmap_));
    }
    /// Takes two octets only where one is not enough.
    void set_nstr_indication_bitmap(std::optional<std::uint16_t> value);
    std::optional<std::uint8_t> get_bss_parameters_change_count() const {
        return if_present(change_count, bss_parameters_change_count_);
    }
    void set_bss_parameters_change_count(std::optional<std::uint8_t> value) {
        set(change_count, bss_parameters_change_count_, value);
    }

    /// Octets that the STA Info's length counts behind these fields: later editions append there.
    /// Where the length cannot count them, writing throws "Invalid length".
    const Surplus& get_sta_info_surplus() const { return sta_info_surplus_; }
    void set_sta_info_surplus(const Surplus& octets) {
        sta_info_surplus_ = octets;
        has_sta_info_ = true;
    }

    /// None where the profile ends before it.
    const std::optional<std::bitset<16>>& get_capability_information() const {
        return capability_information_;
    }
    void set_capability_information(const std::optional<std::bitset<16>>& bits) {
        capability_information_ = bits;
        has_sta_info_ = true;  // it stands behind
    }
    /// The elements that are not inherited from the frame. Nothing is written of them without
    /// capability information before them.
    const IEEE802_11_ElementSequence& get_elements() const { return elements_; }
    IEEE802_11_ElementSequence& get_elements() { return elements_; }

    /// The shape of EHT Capabilities here if the profile inherits its HE Capabilities. Without them
    /// known, EHT Capabilities stay raw.
    void inherit_eht_maps(const IEEE802_11_EHTMaps& maps) { eht_maps_ = maps; }

    std::uint32_t get_length() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    /// "Invalid length" if the STA Info is longer than its length octet can say.
    void check_fields() const override;

protected:
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;
    std::optional<std::uint8_t> fragment_id() const override;

private:
    struct Layout;

    // Bits of STA Control.
    static constexpr unsigned link_id_bits = 4;
    static constexpr unsigned long link_id_mask = 0xF;
    static constexpr std::size_t complete = 4;
    static constexpr std::size_t mac_address = 5;
    static constexpr std::size_t beacon_interval = 6;
    static constexpr std::size_t tsf_offset = 7;
    static constexpr std::size_t dtim_info = 8;
    static constexpr std::size_t nstr_indication = 9;
    static constexpr std::size_t nstr_two_octets = 10;
    static constexpr std::size_t change_count = 11;

    template <class T>
    std::optional<T> if_present(std::size_t bit, const T& value) const {
        return has_sta_info_ && sta_control_[bit] ? std::optional(value) : std::nullopt;
    }
    template <class T>
    void set(std::size_t bit, T& field, const std::optional<T>& value) {
        mark(bit, value.has_value());
        field = value.value_or(T{});
    }
    void mark(std::size_t bit, bool present) {
        sta_control_[bit] = present;
        has_sta_info_ = true;
    }

    std::unique_ptr<IEEE802_11_Element_Base> make_element(
        IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension) const;

    std::bitset<16> sta_control_;
    bool has_sta_info_ = true;  // absent where nothing but the link is told
    MACAddress sta_mac_address_;
    std::uint16_t beacon_interval_ = 0;
    std::uint64_t tsf_offset_ = 0;  // of a signed number
    std::uint8_t dtim_count_ = 0;
    std::uint8_t dtim_period_ = 0;
    std::uint8_t nstr_bitmap_ = 0;
    std::uint8_t nstr_bitmap_high_ = 0;
    std::uint8_t bss_parameters_change_count_ = 0;
    Surplus sta_info_surplus_;
    std::optional<std::bitset<16>> capability_information_;
    IEEE802_11_ElementSequence elements_;
    std::optional<IEEE802_11_EHTMaps> eht_maps_;
};

}  // namespace nuv::ieee802_11
