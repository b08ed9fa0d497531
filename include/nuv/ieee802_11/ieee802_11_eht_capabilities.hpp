// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>

#include "nuv/byte_order.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Which maps EHT Capabilities have that do not follow from themselves: the one of a station that
/// operates at 20 MHz only, the one up to 80 MHz, the one for 160 MHz.
struct IEEE802_11_EHTMaps {
    bool has_20_mhz_only = false;
    bool has_less_or_equal_80_mhz = false;
    bool has_160_mhz = false;
};

/// EHT Capabilities (ID 255, extension 108; IEEE Std 802.11be-2024, 9.4.2.323). Bit numbers are
/// those of the standard's fields.
///
/// Which maps are there is not on the wire: for the first three it follows from the HE Capabilities
/// of the same frame and is told to the constructor, for the 320 MHz one from PHY bit 1.
/// Deliberate: elements with different maps are equal if their values are; an absent map is zero.
class NUV_EXPORT IEEE802_11_EHTCapabilities
    : public IEEE802_11_LayoutElement<IEEE802_11_EHTCapabilities,
                                      IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                      IEEE802_11_Element_ID_Extension::EHT_CAPABILITIES> {
public:
    using PPEThresholds = SmallVector<std::uint8_t, 32>;

    /// Four octets in one number, see the setter.
    using EHT_20_MHz_only_non_AP_STA_MCS_NSS_MAP = std::uint32_t;

    /// The greatest numbers of spatial streams, 4 bits each: octet 0 for EHT-MCS 0 to 9, octet 1
    /// for 10 and 11, octet 2 for 12 and 13; reception in the low half of the octet, transmission
    /// in the high.
    class EHT_MCS_NSS_MAP {
    public:
        constexpr EHT_MCS_NSS_MAP() = default;
        /// Nibble n of the low 24 bits is nibble n of the map, lowest first.
        explicit constexpr EHT_MCS_NSS_MAP(std::uint32_t nibbles) : nibbles_(nibbles & 0xFFFFFFU) {}
        explicit EHT_MCS_NSS_MAP(const std::bitset<24>& bits)
            : nibbles_(static_cast<std::uint32_t>(bits.to_ullong())) {}

        explicit(false) operator std::bitset<24>() const { return std::bitset<24>(nibbles_); }
        /// `octet` is 0 to 2.
        std::uint8_t get_rx_max_nss(unsigned octet) const { return nibble(2 * octet); }
        std::uint8_t get_tx_max_nss(unsigned octet) const { return nibble(2 * octet + 1); }

        bool operator==(const EHT_MCS_NSS_MAP&) const = default;

    private:
        std::uint8_t nibble(unsigned n) const {
            return static_cast<std::uint8_t>(nibbles_ >> (4 * n) & 0xFU);
        }

        std::uint32_t nibbles_ = 0;
    };

    IEEE802_11_EHTCapabilities() = default;
    explicit IEEE802_11_EHTCapabilities(const IEEE802_11_EHTMaps& maps)
        : IEEE802_11_EHTCapabilities(maps.has_20_mhz_only, maps.has_less_or_equal_80_mhz,
                                     maps.has_160_mhz) {}
    /// The same, one by one.
    IEEE802_11_EHTCapabilities(bool has_20_mhz_only_map, bool has_less_or_equal_80_mhz_map,
                               bool has_160_mhz_map)
        : has_20_mhz_only_map_(has_20_mhz_only_map),
          has_less_or_equal_80_mhz_map_(has_less_or_equal_80_mhz_map),
          has_160_mhz_map_(has_160_mhz_map) {}

    /// EHT MAC Capabilities Information.
    const std::bitset<16>& get_mac_info_bits() const { return mac_info_bits_; }
    void set_mac_info_bits(const std::bitset<16>& value) { mac_info_bits_ = value; }
    /// EHT PHY Capabilities Information.
    const std::bitset<72>& get_phy_info_bits() const { return phy_info_bits_; }
    void set_phy_info_bits(const std::bitset<72>& value) { phy_info_bits_ = value; }
    /// Deliberate: on the wire the value's most significant octet comes first, so that its low
    /// octet is the last of the four (EHT-MCS 12 and 13); both ends agree on this order. Setting
    /// the map makes it present if its low four bits are not all zero, and absent otherwise.
    EHT_20_MHz_only_non_AP_STA_MCS_NSS_MAP get_20_mhz_only_non_ap_sta_mcs_nss_map() const {
        return mcs_nss_map_20_mhz_only_;
    }
    void set_20_mhz_only_non_ap_sta_mcs_nss_map(EHT_20_MHz_only_non_AP_STA_MCS_NSS_MAP value) {
        mcs_nss_map_20_mhz_only_ = value;
        has_20_mhz_only_map_ = (value & 0xFU) != 0;
    }
    /// The same as the standard means it: the low octet is the first of the four (EHT-MCS 0 to 7).
    /// Setting it makes it present if its low four bits, the streams received with EHT-MCS 0 to 7,
    /// are not all zero, and absent otherwise.
    EHT_20_MHz_only_non_AP_STA_MCS_NSS_MAP get_20_mhz_only_non_ap_sta_mcs_nss_map_standard() const {
        return swap_octets(mcs_nss_map_20_mhz_only_);
    }
    void set_20_mhz_only_non_ap_sta_mcs_nss_map_standard(
        EHT_20_MHz_only_non_AP_STA_MCS_NSS_MAP value) {
        mcs_nss_map_20_mhz_only_ = swap_octets(value);
        has_20_mhz_only_map_ = (value & 0xFU) != 0;
    }
    const EHT_MCS_NSS_MAP& get_less_or_equal_80_mhz_mcs_nss_map() const {
        return mcs_nss_map_less_or_equal_80_mhz_;
    }
    void set_less_or_equal_80_mhz_mcs_nss_map(const EHT_MCS_NSS_MAP& value) {
        mcs_nss_map_less_or_equal_80_mhz_ = value;
    }
    const EHT_MCS_NSS_MAP& get_160_mhz_mcs_nss_map() const { return mcs_nss_map_160_mhz_; }
    void set_160_mhz_mcs_nss_map(const EHT_MCS_NSS_MAP& value) { mcs_nss_map_160_mhz_ = value; }
    const EHT_MCS_NSS_MAP& get_320_mhz_mcs_nss_map() const { return mcs_nss_map_320_mhz_; }
    void set_320_mhz_mcs_nss_map(const EHT_MCS_NSS_MAP& value) { mcs_nss_map_320_mhz_ = value; }
    /// EHT PPE Thresholds, uninterpreted: every octet that remains.
    const PPEThresholds& get_ppe_threshold_field_dummy() const {
        return ppe_threshold_field_dummy_;
    }
    void set_ppe_threshold_field_dummy(const PPEThresholds& value) {
        ppe_threshold_field_dummy_ = value;
    }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    std::bitset<16> mac_info_bits_;
    std::bitset<72> phy_info_bits_;
    EHT_20_MHz_only_non_AP_STA_MCS_NSS_MAP mcs_nss_map_20_mhz_only_{};
    EHT_MCS_NSS_MAP mcs_nss_map_less_or_equal_80_mhz_{};
    EHT_MCS_NSS_MAP mcs_nss_map_160_mhz_{};
    EHT_MCS_NSS_MAP mcs_nss_map_320_mhz_{};
    PPEThresholds ppe_threshold_field_dummy_;
    bool has_20_mhz_only_map_ = false;
    bool has_less_or_equal_80_mhz_map_ = false;
    bool has_160_mhz_map_ = false;
};

}  // namespace nuv::ieee802_11
