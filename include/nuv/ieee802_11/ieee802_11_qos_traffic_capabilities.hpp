// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// QoS Traffic Capability (ID 89; IEEE Std 802.11-2020, 9.4.2.77).
class NUV_EXPORT IEEE802_11_QoSTrafficCapabilities
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::QOS_TRAFFIC_CAPABILITY> {};

}  // namespace nuv::ieee802_11
