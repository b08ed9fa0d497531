// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>

#include "nuv/byte_order.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"

namespace nuv::ieee802_11 {

/// The channel width of an EHT BSS as the Control octet numbers it: not the numbers of
/// ChannelWidth, and there is no 80+80 MHz. Every octet is carried.
enum class IEEE802_11_EHTOperationChannelWidthValue : std::uint8_t {
    WIDTH_20 = 0,
    WIDTH_40 = 1,
    WIDTH_80 = 2,
    WIDTH_160 = 3,
    WIDTH_320 = 4,
};

/// EHT Operation (ID 255, extension 106; IEEE Std 802.11be-2024, 9.4.2.321).
///
/// Deliberate: the two numbers of more than one octet go over the wire most significant octet
/// first; both ends of this system agree on it. Their values as the standard means them have
/// accessors with the suffix `_standard`. And the bitmap is there when bit 1 of the parameters says
/// so, with or without the operation information that the standard puts it into.
class NUV_EXPORT IEEE802_11_EHTOperation
    : public IEEE802_11_LayoutElement<IEEE802_11_EHTOperation,
                                      IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                      IEEE802_11_Element_ID_Extension::EHT_OPERATION> {
public:
    using ChannelWidthValue = IEEE802_11_EHTOperationChannelWidthValue;

    IEEE802_11_EHTOperation() = default;
    /// Whatever `parameters` says, both optional parts are present.
    IEEE802_11_EHTOperation(const std::bitset<8>& parameters, std::uint32_t basic_mcs_nss_set,
                            ChannelWidthValue width, std::uint8_t ccfs0, std::uint8_t ccfs1,
                            std::uint16_t disabled_subchannel_bitmap)
        : eht_operation_parameters_(parameters),
          basic_mcs_nss_set_(basic_mcs_nss_set),
          control_channel_width_value_(width),
          ccfs0_(ccfs0),
          ccfs1_(ccfs1),
          disabled_subchannel_bitmap_(disabled_subchannel_bitmap) {
        eht_operation_parameters_.set(operation_information_present);
        eht_operation_parameters_.set(disabled_subchannel_bitmap_present);
    }

    /// Bit 0: operation information present, bit 1: disabled subchannel bitmap present.
    const std::bitset<8>& get_eht_operation_parameters() const { return eht_operation_parameters_; }
    void set_eht_operation_parameters(const std::bitset<8>& value) {
        eht_operation_parameters_ = value;
    }
    /// Basic EHT-MCS And NSS Set: the low octet is the last one on the wire (EHT-MCS 12 and 13).
    std::uint32_t get_basic_mcs_nss_set() const { return basic_mcs_nss_set_; }
    void set_basic_mcs_nss_set(std::uint32_t value) { basic_mcs_nss_set_ = value; }
    /// The same as the standard means it: the low octet is the first one (EHT-MCS 0 to 7).
    std::uint32_t get_basic_mcs_nss_set_standard() const { return swap_octets(basic_mcs_nss_set_); }
    void set_basic_mcs_nss_set_standard(std::uint32_t value) {
        basic_mcs_nss_set_ = swap_octets(value);
    }
    /// Setting it, or a center frequency segment, makes the operation information present.
    ChannelWidthValue get_control_channel_width_value() const {
        return control_channel_width_value_;
    }
    void set_control_channel_width_value(ChannelWidthValue value) {
        control_channel_width_value_ = value;
        eht_operation_parameters_.set(operation_information_present);
    }
    std::uint8_t get_ccfs0() const { return ccfs0_; }
    void set_ccfs0(std::uint8_t value) {
        ccfs0_ = value;
        eht_operation_parameters_.set(operation_information_present);
    }
    std::uint8_t get_ccfs1() const { return ccfs1_; }
    void set_ccfs1(std::uint8_t value) {
        ccfs1_ = value;
        eht_operation_parameters_.set(operation_information_present);
    }
    /// Disabled Subchannel Bitmap, its two octets in reverse. Setting it makes it present.
    std::uint16_t get_disabled_subchannel_bitmap() const { return disabled_subchannel_bitmap_; }
    void set_disabled_subchannel_bitmap(std::uint16_t value) {
        disabled_subchannel_bitmap_ = value;
        eht_operation_parameters_.set(disabled_subchannel_bitmap_present);
    }
    /// The same as the standard means it. Bit n: the n-th lowest 20 MHz subchannel is punctured.
    std::uint16_t get_disabled_subchannel_bitmap_standard() const {
        return swap_octets(disabled_subchannel_bitmap_);
    }
    void set_disabled_subchannel_bitmap_standard(std::uint16_t value) {
        set_disabled_subchannel_bitmap(swap_octets(value));
    }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    static constexpr std::size_t operation_information_present = 0;
    static constexpr std::size_t disabled_subchannel_bitmap_present = 1;

    std::bitset<8> eht_operation_parameters_;
    std::uint32_t basic_mcs_nss_set_ = 0;
    ChannelWidthValue control_channel_width_value_{};
    std::uint8_t ccfs0_ = 0;
    std::uint8_t ccfs1_ = 0;
    std::uint16_t disabled_subchannel_bitmap_ = 0;
};

}  // namespace nuv::ieee802_11
