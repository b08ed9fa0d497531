// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_supported_rates_bss_membership_selector.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

namespace {

constexpr std::size_t max_rates = 8;

void check_size(bool ok) {
    if (!ok) {
        throw serialization::SerializationException("Invalid size");
    }
}

}  // namespace

/// | offset | size   | field | clause                                     |
/// |--------|--------|-------|--------------------------------------------|
/// | 2      | 1 to 8 | rates | 9.4.2.3; the standard allows no empty list |
struct IEEE802_11_SupportedRatesBSSMembershipSelector::Layout {
    using E = IEEE802_11_SupportedRatesBSSMembershipSelector;
    using fields = layout::Fields<layout::Rest<"supported_rates", &E::supported_rates_>>;

    static void check_length(std::uint8_t length) { check_size(length <= max_rates); }
    static void check_fields(const E& e) {
        check_size(!e.supported_rates_.empty() && e.supported_rates_.size() <= max_rates);
    }
};

template class IEEE802_11_LayoutElement<IEEE802_11_SupportedRatesBSSMembershipSelector,
                                        IEEE802_11_Element_ID::SUPPORTED_RATES>;

}  // namespace nuv::ieee802_11
