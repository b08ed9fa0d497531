// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_eht_operation.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size | field                       | clause 9.4.2.321                           |
/// |--------|------|-----------------------------|--------------------------------------------|
/// | 3      | 1    | eht_operation_parameters    |                                            |
/// | 4      | 4    | basic_mcs_nss_set           | deliberate: most significant octet first   |
/// |        | 1    | control_channel_width_value | with parameters bit 0                      |
/// |        | 1    | ccfs0                       | with parameters bit 0                      |
/// |        | 1    | ccfs1                       | with parameters bit 0                      |
/// |        | 2    | disabled_subchannel_bitmap  | with parameters bit 1; deliberate: without |
/// |        |      |                             | bit 0, too, and most significant first     |
struct IEEE802_11_EHTOperation::Layout {
    using E = IEEE802_11_EHTOperation;
    static bool has_information(const E& e) {
        return e.eht_operation_parameters_[operation_information_present];
    }
    static bool has_bitmap(const E& e) {
        return e.eht_operation_parameters_[disabled_subchannel_bitmap_present];
    }

    using fields = layout::Fields<
        layout::Always<"eht_operation_parameters", &E::eht_operation_parameters_>,
        layout::Always<"basic_mcs_nss_set", &E::basic_mcs_nss_set_>,
        layout::When<
            layout::Always<"control_channel_width_value", &E::control_channel_width_value_>,
            has_information>,
        layout::When<layout::Always<"ccfs0", &E::ccfs0_>, has_information>,
        layout::When<layout::Always<"ccfs1", &E::ccfs1_>, has_information>,
        layout::When<layout::Always<"disabled_subchannel_bitmap", &E::disabled_subchannel_bitmap_>,
                     has_bitmap>>;
    static_assert(fields::fixed_length == 5);
};

template class IEEE802_11_LayoutElement<IEEE802_11_EHTOperation,
                                        IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                        IEEE802_11_Element_ID_Extension::EHT_OPERATION>;

}  // namespace nuv::ieee802_11
