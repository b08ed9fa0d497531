// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_rm_enabled_capabilities.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size | field        | clause                             |
/// |--------|------|--------------|------------------------------------|
/// | 2      | 5    | capabilities | 9.4.2.44 RM Enabled Capabilities   |
struct IEEE802_11_RMEnabledCapabilities::Layout {
    using E = IEEE802_11_RMEnabledCapabilities;
    using fields = layout::Fields<layout::Always<"capabilities", &E::capabilities_>>;
    static_assert(fields::fixed_length == 5);
};

template class IEEE802_11_LayoutElement<IEEE802_11_RMEnabledCapabilities,
                                        IEEE802_11_Element_ID::RM_ENABLED_CAPABILITIES>;

}  // namespace nuv::ieee802_11
