// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_mobility_domain.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size | field        | clause                                                       |
/// |--------|------|--------------|--------------------------------------------------------------|
/// | 2      | 2    | MDID         | 9.4.2.46; deliberate: most significant octet first, the      |
/// |        |      |              | standard orders the octets the other way                     |
/// | 4      | 1    | capabilities | 9.4.2.46, FT Capability and Policy                           |
struct IEEE802_11_MobilityDomain::Layout {
    using E = IEEE802_11_MobilityDomain;
    using fields = layout::Fields<layout::Always<"mdid", &E::mdid_>,
                                  layout::Always<"capabilities", &E::capabilities_>>;
    static_assert(fields::fixed_length == 3);
};

template class IEEE802_11_LayoutElement<IEEE802_11_MobilityDomain,
                                        IEEE802_11_Element_ID::MOBILITY_DOMAIN>;

}  // namespace nuv::ieee802_11
