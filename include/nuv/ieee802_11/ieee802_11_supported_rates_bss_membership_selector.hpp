// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Supported Rates and BSS Membership Selectors (ID 1; IEEE Std 802.11-2020, 9.4.2.3): one octet a
/// rate, in units of 500 kb/s, bit 7 set for a basic rate.
///
/// Holds 1 to 8 rates on writing, else "Invalid size"; up to 8 on reading, else the same. An
/// element without rates is read as the empty list although it is not written (deliberate: stations
/// send it).
class NUV_EXPORT IEEE802_11_SupportedRatesBSSMembershipSelector
    : public IEEE802_11_LayoutElement<IEEE802_11_SupportedRatesBSSMembershipSelector,
                                      IEEE802_11_Element_ID::SUPPORTED_RATES> {
public:
    using Rates = SmallVector<std::uint8_t, 8>;

    const Rates& get_supported_rates() const { return supported_rates_; }
    void set_supported_rates(const Rates& rates) { supported_rates_ = rates; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    Rates supported_rates_;
};

}  // namespace nuv::ieee802_11
