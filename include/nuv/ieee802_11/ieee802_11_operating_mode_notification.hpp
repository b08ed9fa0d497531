// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// Operating Mode Notification (ID 199; IEEE Std 802.11-2020, 9.4.2.165): the Operating Mode octet.
class NUV_EXPORT IEEE802_11_OperatingModeNotification
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::OPERATING_MODE_NOTIFICATION> {};

}  // namespace nuv::ieee802_11
