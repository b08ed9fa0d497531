// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_operating_mode_notification.hpp"

#include <array>

#include "internal/ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::OPERATING_MODE_NOTIFICATION>;

IEEE802_11_OperatingModeNotification::Names IEEE802_11_OperatingModeNotification::names() const {
    static constexpr std::array names{width, wide, no_ldpc, rx_nss_minus_1, rx_nss_type};
    return names;
}

}  // namespace nuv::ieee802_11
