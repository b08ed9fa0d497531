// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_operating_mode_notification.hpp"

#include "ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::OPERATING_MODE_NOTIFICATION>;

}  // namespace nuv::ieee802_11
