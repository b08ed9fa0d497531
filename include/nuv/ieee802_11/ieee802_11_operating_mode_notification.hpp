// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// Operating Mode Notification (ID 199; IEEE Std 802.11-2020, 9.4.2.165): the Operating Mode octet
/// (9.4.1.53). Everything is absent without it.
class NUV_EXPORT IEEE802_11_OperatingModeNotification
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::OPERATING_MODE_NOTIFICATION> {
public:
    /// What the station receives at most, together with the flag for 160 and 80+80 MHz.
    enum class Width : std::uint8_t {
        WIDTH_20 = 0,
        WIDTH_40 = 1,
        WIDTH_80 = 2,
        WIDTH_160 = 3,  ///< 160 or 80+80 MHz as older stations say it
    };
    /// What the number of spatial streams is a limit of.
    enum class NSSType : std::uint8_t { ALL = 0, BEAMFORMED = 1 };

    std::optional<Width> get_channel_width() const { return get<Width>(width); }
    void set_channel_width(Width value) { set(width, value); }
    /// 160 or 80+80 MHz; only with WIDTH_80.
    std::optional<bool> get_160_or_80_80_mhz() const { return get<bool>(wide); }
    void set_160_or_80_80_mhz(bool value) { set(wide, value); }
    /// The station prefers not to receive LDPC.
    std::optional<bool> get_no_ldpc() const { return get<bool>(no_ldpc); }
    void set_no_ldpc(bool value) { set(no_ldpc, value); }
    /// The greatest number of spatial streams received, 1 to 8.
    std::optional<std::uint8_t> get_rx_nss() const {
        auto streams = get(rx_nss_minus_1);
        if (streams) {
            ++*streams;
        }
        return streams;
    }
    /// 1 to 8; of another number the low three bits of it less 1 count.
    void set_rx_nss(std::uint8_t streams) { set(rx_nss_minus_1, streams - 1); }
    std::optional<NSSType> get_rx_nss_type() const { return get<NSSType>(rx_nss_type); }
    void set_rx_nss_type(NSSType value) { set(rx_nss_type, value); }

protected:
    Names names() const override;

private:
    static constexpr IEEE802_11_Bits width{.name = "channel_width", .first = 0, .count = 2};
    static constexpr IEEE802_11_Bits wide{.name = "160_or_80_80_mhz", .first = 2, .count = 1};
    static constexpr IEEE802_11_Bits no_ldpc{.name = "no_ldpc", .first = 3, .count = 1};
    static constexpr IEEE802_11_Bits rx_nss_minus_1{
        .name = "rx_nss_minus_1", .first = 4, .count = 3};
    static constexpr IEEE802_11_Bits rx_nss_type{.name = "rx_nss_type", .first = 7, .count = 1};
};

}  // namespace nuv::ieee802_11
