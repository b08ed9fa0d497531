// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// TID-To-Link Mapping (ID 255, extension 109; IEEE Std 802.11be-2024, 9.4.2.324).
class NUV_EXPORT IEEE802_11_TID_to_Link_Mapping
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                   IEEE802_11_Element_ID_Extension::TID_TO_LINK_MAPPING> {};

}  // namespace nuv::ieee802_11
