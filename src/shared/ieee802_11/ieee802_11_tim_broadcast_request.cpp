// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_tim_broadcast_request.hpp"

#include <array>

#include "internal/ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::TIM_BROADCAST_REQUEST>;

IEEE802_11_TIMBroadcastRequest::Names IEEE802_11_TIMBroadcastRequest::names() const {
    static constexpr std::array names{interval};
    return names;
}

}  // namespace nuv::ieee802_11
