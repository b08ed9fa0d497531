// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// Power Capability (ID 33; IEEE Std 802.11-2020, 9.4.2.14): the least and the greatest power with
/// which the station can transmit, in dBm. Each is absent if the body ends before it.
class NUV_EXPORT IEEE802_11_PowerCapability
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::POWER_CAPABILITY> {
public:
    std::optional<std::int8_t> get_minimum_transmit_power() const {
        return get<std::int8_t>(minimum);
    }
    void set_minimum_transmit_power(std::int8_t dbm) { set(minimum, dbm); }
    std::optional<std::int8_t> get_maximum_transmit_power() const {
        return get<std::int8_t>(maximum);
    }
    void set_maximum_transmit_power(std::int8_t dbm) { set(maximum, dbm); }

protected:
    Names names() const override;

private:
    static constexpr IEEE802_11_Bits minimum{
        .name = "minimum_transmit_power", .octet = 0, .is_signed = true};
    static constexpr IEEE802_11_Bits maximum{
        .name = "maximum_transmit_power", .octet = 1, .is_signed = true};
};

}  // namespace nuv::ieee802_11
