// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// QoS Traffic Capability (ID 89; IEEE Std 802.11-2020, 9.4.2.77): an octet of flags; from an
/// access point, numbers of stations behind it. Stations send it without a body, too.
class NUV_EXPORT IEEE802_11_QoSTrafficCapabilities
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::QOS_TRAFFIC_CAPABILITY> {
public:
    /// Bits 4 to 6: the station expects traffic of this user priority. Bits 0 and 1, from an access
    /// point: the number of stations of AC_VO, of AC_VI, follows. Absent without a body.
    std::optional<std::uint8_t> get_flags() const { return get(IEEE802_11_Bits{}); }
    /// What follows the flags.
    std::span<const std::uint8_t> get_station_counts() const {
        return std::span(get_body()).subspan(get_body().empty() ? 0 : 1);
    }
};

}  // namespace nuv::ieee802_11
