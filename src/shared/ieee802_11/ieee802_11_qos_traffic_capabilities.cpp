// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_qos_traffic_capabilities.hpp"

#include "internal/ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::QOS_TRAFFIC_CAPABILITY>;

}  // namespace nuv::ieee802_11
