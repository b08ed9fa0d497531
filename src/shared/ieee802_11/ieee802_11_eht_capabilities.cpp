// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::impl {

/// The map as its bit set of 24.
template <>
struct WireForm<ieee802_11::IEEE802_11_EHTCapabilities::EHT_MCS_NSS_MAP>
    : WireForm<std::bitset<24>> {
    using Map = ieee802_11::IEEE802_11_EHTCapabilities::EHT_MCS_NSS_MAP;

    static void decode(const std::uint8_t* octets, std::size_t count, Map& map) {
        std::bitset<24> bits = map;
        WireForm<std::bitset<24>>::decode(octets, count, bits);
        map = Map(bits);
    }
};

}  // namespace nuv::impl

namespace nuv::ieee802_11 {

/// | offset | size | field                              | clause                              |
/// |--------|------|------------------------------------|-------------------------------------|
/// | 3      | 2    | mac_info_bits                      | 9.4.2.323.2                         |
/// | 5      | 9    | phy_info_bits                      | 9.4.2.323.3                         |
/// |        | 4    | 20_mhz_only_non_ap_sta_mcs_nss_map | 9.4.2.323.4; deliberate: one number |
/// |        |      |                                    | most significant octet first        |
/// |        | 3    | less_or_equal_80_mhz_mcs_nss_map   | 9.4.2.323.4                         |
/// |        | 3    | 160_mhz_mcs_nss_map                | 9.4.2.323.4                         |
/// |        | 3    | 320_mhz_mcs_nss_map                | 9.4.2.323.4, with PHY bit 1         |
/// |        | rest | ppe_threshold_field_dummy          | 9.4.2.323.5 EHT PPE Thresholds      |
struct IEEE802_11_EHTCapabilities::Layout {
    using E = IEEE802_11_EHTCapabilities;
    static bool has_20_mhz_only(const E& e) { return e.has_20_mhz_only_map_; }
    static bool has_80_mhz(const E& e) { return e.has_less_or_equal_80_mhz_map_; }
    static bool has_160_mhz(const E& e) { return e.has_160_mhz_map_; }
    static bool has_320_mhz(const E& e) { return e.phy_info_bits_[1]; }

    using fields = layout::Fields<
        layout::Always<"mac_info_bits", &E::mac_info_bits_>,
        layout::Always<"phy_info_bits", &E::phy_info_bits_>,
        layout::When<
            layout::Always<"20_mhz_only_non_ap_sta_mcs_nss_map", &E::mcs_nss_map_20_mhz_only_>,
            has_20_mhz_only>,
        layout::When<layout::Always<"less_or_equal_80_mhz_mcs_nss_map",
                                    &E::mcs_nss_map_less_or_equal_80_mhz_>,
                     has_80_mhz>,
        layout::When<layout::Always<"160_mhz_mcs_nss_map", &E::mcs_nss_map_160_mhz_>, has_160_mhz>,
        layout::When<layout::Always<"320_mhz_mcs_nss_map", &E::mcs_nss_map_320_mhz_>, has_320_mhz>,
        layout::Rest<"ppe_threshold_field_dummy", &E::ppe_threshold_field_dummy_>>;
    static_assert(fields::fixed_length == 11);
};

template class IEEE802_11_LayoutElement<IEEE802_11_EHTCapabilities,
                                        IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                        IEEE802_11_Element_ID_Extension::EHT_CAPABILITIES>;

}  // namespace nuv::ieee802_11
