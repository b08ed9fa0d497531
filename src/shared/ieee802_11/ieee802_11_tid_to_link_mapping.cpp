// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_tid_to_link_mapping.hpp"

#include "ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                     IEEE802_11_Element_ID_Extension::TID_TO_LINK_MAPPING>;

}  // namespace nuv::ieee802_11
