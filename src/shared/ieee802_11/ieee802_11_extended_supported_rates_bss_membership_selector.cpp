// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_extended_supported_rates_bss_membership_selector.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size     | field | clause   |
/// |--------|----------|-------|----------|
/// | 2      | 1 to 255 | rates | 9.4.2.12 |
struct IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector::Layout {
    using E = IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector;
    using fields =
        layout::Fields<layout::Rest<"extended_supported_rates", &E::extended_supported_rates_>>;

    static void check_fields(const E& e) {
        if (e.extended_supported_rates_.empty() || e.extended_supported_rates_.size() > 255) {
            throw serialization::SerializationException("Invalid size");
        }
    }
};

template class IEEE802_11_LayoutElement<IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector,
                                        IEEE802_11_Element_ID::EXTENDED_SUPPORTED_RATES>;

}  // namespace nuv::ieee802_11
