// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Extended Supported Rates and BSS Membership Selectors (ID 50; IEEE Std 802.11-2020, 9.4.2.12):
/// the rates beyond the eighth, one octet each as in the Supported Rates element.
///
/// Holds 1 to 255 rates on writing, else "Invalid size"; any number on reading.
class NUV_EXPORT IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector
    : public IEEE802_11_LayoutElement<IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector,
                                      IEEE802_11_Element_ID::EXTENDED_SUPPORTED_RATES> {
public:
    using Rates = SmallVector<std::uint8_t, 16>;

    const Rates& get_extended_supported_rates() const { return extended_supported_rates_; }
    void set_extended_supported_rates(const Rates& rates) { extended_supported_rates_ = rates; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    Rates extended_supported_rates_;
};

}  // namespace nuv::ieee802_11
