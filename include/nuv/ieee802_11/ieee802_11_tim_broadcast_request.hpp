// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// TIM Broadcast Request (ID 94; IEEE Std 802.11-2020, 9.4.2.82): the interval in beacon intervals.
class NUV_EXPORT IEEE802_11_TIMBroadcastRequest
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::TIM_BROADCAST_REQUEST> {};

}  // namespace nuv::ieee802_11
