// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// TIM Broadcast Request (ID 94; IEEE Std 802.11-2020, 9.4.2.82).
class NUV_EXPORT IEEE802_11_TIMBroadcastRequest
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::TIM_BROADCAST_REQUEST> {
public:
    /// Beacon intervals between two TIM frames, 0 for none; absent if the body is empty.
    std::optional<std::uint8_t> get_broadcast_interval() const { return get(interval); }
    void set_broadcast_interval(std::uint8_t beacon_intervals) { set(interval, beacon_intervals); }

protected:
    Names names() const override;

private:
    static constexpr IEEE802_11_Bits interval{.name = "broadcast_interval"};
};

}  // namespace nuv::ieee802_11
