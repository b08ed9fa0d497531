// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// Multiple MAC Sublayers (ID 170; IEEE Std 802.11-2020, 9.4.2.152).
class NUV_EXPORT IEEE802_11_MultipleMACSublayers
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::MULTIPLE_MAC_SUBLAYERS> {};

}  // namespace nuv::ieee802_11
