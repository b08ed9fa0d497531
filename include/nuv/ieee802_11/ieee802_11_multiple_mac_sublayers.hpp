// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"
#include "nuv/mac_address.hpp"

namespace nuv::ieee802_11 {

/// Multiple MAC Sublayers (ID 170; IEEE Std 802.11-2020, 9.4.2.152), of stations at 60 GHz: a
/// control octet and addresses.
class NUV_EXPORT IEEE802_11_MultipleMACSublayers
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::MULTIPLE_MAC_SUBLAYERS> {
public:
    /// MMS Control, absent without a body.
    std::optional<std::uint8_t> get_mms_control() const { return get(IEEE802_11_Bits{}); }
    /// Absent if the body ends before or inside it.
    std::optional<MACAddress> get_sta_address() const { return address(0); }
    /// The first one has index 0. Absent likewise.
    std::optional<MACAddress> get_interface_address(std::uint8_t index) const {
        return address(std::size_t{1} + index);
    }

private:
    std::optional<MACAddress> address(std::size_t index) const;
};

}  // namespace nuv::ieee802_11
