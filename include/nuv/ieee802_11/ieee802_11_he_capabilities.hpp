// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// HE Capabilities (ID 255, extension 35; IEEE Std 802.11ax-2021, 9.4.2.248). Bit numbers are those
/// of the standard's fields. Two bits of the PHY information decide what else is there: bit 3 (160
/// MHz) and bit 4 (80+80 MHz), which are B2 and B3 of the Channel Width Set, whose bit 0 is bit 1
/// here.
class NUV_EXPORT IEEE802_11_HECapabilities
    : public IEEE802_11_LayoutElement<IEEE802_11_HECapabilities,
                                      IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                      IEEE802_11_Element_ID_Extension::HE_CAPABILITIES> {
public:
    using PPEThresholds = SmallVector<std::uint8_t, 28>;

    /// HE MAC Capabilities Information.
    const std::bitset<48>& get_mac_info_bits() const { return mac_info_bits_; }
    void set_mac_info_bits(const std::bitset<48>& value) { mac_info_bits_ = value; }
    /// HE PHY Capabilities Information.
    const std::bitset<88>& get_phy_info_bits() const { return phy_info_bits_; }
    void set_phy_info_bits(const std::bitset<88>& value) { phy_info_bits_ = value; }
    /// Supported HE-MCS And NSS Set up to 80 MHz, two bits for each number of streams.
    const std::bitset<16>& get_rx_mcs_leq_80_mhz() const { return rx_mcs_leq_80_mhz_; }
    void set_rx_mcs_leq_80_mhz(const std::bitset<16>& value) { rx_mcs_leq_80_mhz_ = value; }
    const std::bitset<16>& get_tx_mcs_leq_80_mhz() const { return tx_mcs_leq_80_mhz_; }
    void set_tx_mcs_leq_80_mhz(const std::bitset<16>& value) { tx_mcs_leq_80_mhz_ = value; }
    /// On the wire only with PHY bit 3.
    const std::bitset<16>& get_rx_mcs_160_mhz() const { return rx_mcs_160_mhz_; }
    void set_rx_mcs_160_mhz(const std::bitset<16>& value) { rx_mcs_160_mhz_ = value; }
    const std::bitset<16>& get_tx_mcs_160_mhz() const { return tx_mcs_160_mhz_; }
    void set_tx_mcs_160_mhz(const std::bitset<16>& value) { tx_mcs_160_mhz_ = value; }
    /// On the wire only with PHY bit 4.
    const std::bitset<16>& get_rx_mcs_80_80_mhz() const { return rx_mcs_80_80_mhz_; }
    void set_rx_mcs_80_80_mhz(const std::bitset<16>& value) { rx_mcs_80_80_mhz_ = value; }
    const std::bitset<16>& get_tx_mcs_80_80_mhz() const { return tx_mcs_80_80_mhz_; }
    void set_tx_mcs_80_80_mhz(const std::bitset<16>& value) { tx_mcs_80_80_mhz_ = value; }
    /// PPE Thresholds, uninterpreted: every octet that remains.
    const PPEThresholds& get_ppe_threshold_field_dummy() const {
        return ppe_threshold_field_dummy_;
    }
    void set_ppe_threshold_field_dummy(const PPEThresholds& value) {
        ppe_threshold_field_dummy_ = value;
    }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    std::bitset<48> mac_info_bits_;
    std::bitset<88> phy_info_bits_;
    std::bitset<16> rx_mcs_leq_80_mhz_;
    std::bitset<16> tx_mcs_leq_80_mhz_;
    std::bitset<16> rx_mcs_160_mhz_;
    std::bitset<16> tx_mcs_160_mhz_;
    std::bitset<16> rx_mcs_80_80_mhz_;
    std::bitset<16> tx_mcs_80_80_mhz_;
    PPEThresholds ppe_threshold_field_dummy_;
};

}  // namespace nuv::ieee802_11
