// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_non_inheritance.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

/// | offset | size | field                     | clause     |
/// |--------|------|---------------------------|------------|
/// | 3      | 1    | number of IDs             | 9.4.2.240  |
/// | 4      | n    | IDs                       | 9.4.2.240  |
/// | 4 + n  | 1    | number of extension IDs   | 9.4.2.240  |
/// | 5 + n  | m    | extension IDs             | 9.4.2.240  |
struct IEEE802_11_Non_Inheritance::Layout {
    using E = IEEE802_11_Non_Inheritance;
    using fields = layout::Fields<layout::Counted<"ids", &E::ids_>,
                                  layout::Counted<"extended_ids", &E::extended_ids_>>;
};

template class IEEE802_11_LayoutElement<IEEE802_11_Non_Inheritance,
                                        IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                        IEEE802_11_Element_ID_Extension::NON_INHERITANCE>;

std::uint32_t IEEE802_11_Non_Inheritance::get_length() const {
    return IEEE802_11_LayoutElement::get_length() + 1;
}

}  // namespace nuv::ieee802_11
