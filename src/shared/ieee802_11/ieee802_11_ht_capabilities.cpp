// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_ht_capabilities.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size | field         | clause                              |
/// |--------|------|---------------|-------------------------------------|
/// | 2      | 2    | info_bits     | 9.4.2.55.2 HT Capability Information |
/// | 4      | 1    | ampdu_bits    | 9.4.2.55.3 A-MPDU Parameters        |
/// | 5      | 16   | mcs_bits      | 9.4.2.55.4 Supported MCS Set        |
/// | 21     | 2    | extended_bits | 9.4.2.55.5 HT Extended Capabilities |
/// | 23     | 4    | tbf_bits      | 9.4.2.55.6 Transmit Beamforming     |
/// | 27     | 1    | asel_bits     | 9.4.2.55.7 ASEL Capability          |
struct IEEE802_11_HTCapabilities::Layout {
    using E = IEEE802_11_HTCapabilities;
    using fields = layout::Fields<layout::Always<"info_bits", &E::info_bits_>,          //
                                  layout::Always<"ampdu_bits", &E::ampdu_bits_>,        //
                                  layout::Always<"mcs_bits", &E::mcs_bits_>,            //
                                  layout::Always<"extended_bits", &E::extended_bits_>,  //
                                  layout::Always<"tbf_bits", &E::tbf_bits_>,            //
                                  layout::Always<"asel_bits", &E::asel_bits_>>;
    static_assert(fields::fixed_length == 26);
};

template class IEEE802_11_LayoutElement<IEEE802_11_HTCapabilities,
                                        IEEE802_11_Element_ID::HT_CAPABILITIES>;

}  // namespace nuv::ieee802_11
