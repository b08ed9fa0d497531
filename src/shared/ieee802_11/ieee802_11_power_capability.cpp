// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_power_capability.hpp"

#include <array>

#include "internal/ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::POWER_CAPABILITY>;

IEEE802_11_PowerCapability::Names IEEE802_11_PowerCapability::names() const {
    static constexpr std::array names{minimum, maximum};
    return names;
}

}  // namespace nuv::ieee802_11
