// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_vht_capabilities.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size | field          | clause                                   |
/// |--------|------|----------------|------------------------------------------|
/// | 2      | 4    | info_bits      | 9.4.2.157.2 VHT Capabilities Information |
/// | 6      | 8    | supported_bits | 9.4.2.157.3 Supported VHT-MCS and NSS Set |
struct IEEE802_11_VHTCapabilities::Layout {
    using E = IEEE802_11_VHTCapabilities;
    using fields = layout::Fields<layout::Always<"info_bits", &E::info_bits_>,
                                  layout::Always<"supported_bits", &E::supported_bits_>>;
    static_assert(fields::fixed_length == 12);
};

template class IEEE802_11_LayoutElement<IEEE802_11_VHTCapabilities,
                                        IEEE802_11_Element_ID::VHT_CAPABILITIES>;

}  // namespace nuv::ieee802_11
