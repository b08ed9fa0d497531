// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// Power Capability (ID 33; IEEE Std 802.11-2020, 9.4.2.14): the least and the greatest transmit
/// power in dBm, one signed octet each.
class NUV_EXPORT IEEE802_11_PowerCapability
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::POWER_CAPABILITY> {};

}  // namespace nuv::ieee802_11
