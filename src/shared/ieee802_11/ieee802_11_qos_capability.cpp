// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_qos_capability.hpp"

#include <array>

#include "internal/ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::QOS_CAPABILITY>;

IEEE802_11_QOSCapability::Names IEEE802_11_QOSCapability::names() const {
    static constexpr std::array names{qos_info};
    return names;
}

}  // namespace nuv::ieee802_11
