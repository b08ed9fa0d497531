// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size | field                     | clause                                          |
/// |--------|------|---------------------------|-------------------------------------------------|
/// | 3      | 6    | mac_info_bits             | 9.4.2.248.2 HE MAC Capabilities Information     |
/// | 9      | 11   | phy_info_bits             | 9.4.2.248.3 HE PHY Capabilities Information     |
/// | 20     | 2+2  | rx and tx up to 80 MHz    | 9.4.2.248.4 Supported HE-MCS And NSS Set        |
/// |        | 2+2  | rx and tx at 160 MHz      | with PHY bit 3                                  |
/// |        | 2+2  | rx and tx at 80+80 MHz    | with PHY bit 4                                  |
/// |        | rest | ppe_threshold_field_dummy | 9.4.2.248.5 PPE Thresholds                      |
struct IEEE802_11_HECapabilities::Layout {
    using E = IEEE802_11_HECapabilities;
    static bool has_160_mhz(const E& e) { return e.phy_info_bits_[3]; }
    static bool has_80_80_mhz(const E& e) { return e.phy_info_bits_[4]; }

    using fields = layout::Fields<
        layout::Always<"mac_info_bits", &E::mac_info_bits_>,
        layout::Always<"phy_info_bits", &E::phy_info_bits_>,
        layout::Always<"rx_mcs_leq_80_mhz", &E::rx_mcs_leq_80_mhz_>,
        layout::Always<"tx_mcs_leq_80_mhz", &E::tx_mcs_leq_80_mhz_>,
        layout::When<layout::Always<"rx_mcs_160_mhz", &E::rx_mcs_160_mhz_>, has_160_mhz>,
        layout::When<layout::Always<"tx_mcs_160_mhz", &E::tx_mcs_160_mhz_>, has_160_mhz>,
        layout::When<layout::Always<"rx_mcs_80_80_mhz", &E::rx_mcs_80_80_mhz_>, has_80_80_mhz>,
        layout::When<layout::Always<"tx_mcs_80_80_mhz", &E::tx_mcs_80_80_mhz_>, has_80_80_mhz>,
        layout::Rest<"ppe_threshold_field_dummy", &E::ppe_threshold_field_dummy_>>;
    static_assert(fields::fixed_length == 21);
};

template class IEEE802_11_LayoutElement<IEEE802_11_HECapabilities,
                                        IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                        IEEE802_11_Element_ID_Extension::HE_CAPABILITIES>;

}  // namespace nuv::ieee802_11
