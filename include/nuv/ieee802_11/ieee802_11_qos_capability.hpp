// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// QoS Capability (ID 46; IEEE Std 802.11-2020, 9.4.2.34): the QoS Info octet.
class NUV_EXPORT IEEE802_11_QOSCapability
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::QOS_CAPABILITY> {};

}  // namespace nuv::ieee802_11
