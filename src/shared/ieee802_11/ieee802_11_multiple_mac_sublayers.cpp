// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_multiple_mac_sublayers.hpp"

#include <algorithm>

#include "internal/ieee802_11/raw_element.hpp"

namespace nuv::ieee802_11 {

template class IEEE802_11_RawElement<IEEE802_11_Element_ID::MULTIPLE_MAC_SUBLAYERS>;

std::optional<MACAddress> IEEE802_11_MultipleMACSublayers::address(std::size_t index) const {
    const std::size_t at = 1 + MACAddress::MAC_ADDR_LEN * index;
    if (get_body().size() < at + MACAddress::MAC_ADDR_LEN) {
        return std::nullopt;
    }
    MACAddress::Octets octets{};
    std::copy_n(get_body().data() + at, octets.size(), octets.begin());
    return MACAddress(octets);
}

}  // namespace nuv::ieee802_11
