// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// QoS Capability (ID 46; IEEE Std 802.11-2020, 9.4.2.34): the QoS Info octet (9.4.1.17), in which
/// a station and an access point say different things. Everything is absent without it.
class NUV_EXPORT IEEE802_11_QOSCapability
    : public IEEE802_11_RawElement<IEEE802_11_Element_ID::QOS_CAPABILITY> {
public:
    enum class AccessCategory : std::uint8_t { VO = 0, VI = 1, BK = 2, BE = 3 };
    /// How many buffered frames a service period delivers at most.
    enum class MaxSPLength : std::uint8_t { ALL = 0, TWO = 1, FOUR = 2, SIX = 3 };

    std::optional<std::uint8_t> get_qos_info() const { return get(qos_info); }
    void set_qos_info(std::uint8_t octet) { set(qos_info, octet); }

    std::optional<bool> get_q_ack() const { return get<bool>(q_ack); }
    void set_q_ack(bool value) { set(q_ack, value); }

    // From a station.

    /// Whether the access category is trigger- and delivery-enabled.
    std::optional<bool> get_u_apsd(AccessCategory category) const {
        return get<bool>(u_apsd(category));
    }
    void set_u_apsd(AccessCategory category, bool value) { set(u_apsd(category), value); }
    std::optional<MaxSPLength> get_max_sp_length() const { return get<MaxSPLength>(max_sp_length); }
    void set_max_sp_length(MaxSPLength value) { set(max_sp_length, value); }
    std::optional<bool> get_more_data_ack() const { return get<bool>(more_data_ack); }
    void set_more_data_ack(bool value) { set(more_data_ack, value); }

    // From an access point.

    std::optional<std::uint8_t> get_edca_update_count() const { return get(edca_update_count); }
    /// 0 to 15, higher bits are lost.
    void set_edca_update_count(std::uint8_t count) { set(edca_update_count, count); }
    std::optional<bool> get_queue_request() const { return get<bool>(queue_request); }
    void set_queue_request(bool value) { set(queue_request, value); }
    std::optional<bool> get_txop_request() const { return get<bool>(txop_request); }
    void set_txop_request(bool value) { set(txop_request, value); }

protected:
    Names names() const override;

private:
    static constexpr IEEE802_11_Bits u_apsd(AccessCategory category) {
        return {.first = static_cast<std::uint8_t>(category), .count = 1};
    }

    static constexpr IEEE802_11_Bits qos_info{.name = "qos_info"};
    static constexpr IEEE802_11_Bits q_ack{.first = 4, .count = 1};
    static constexpr IEEE802_11_Bits max_sp_length{.first = 5, .count = 2};
    static constexpr IEEE802_11_Bits more_data_ack{.first = 7, .count = 1};
    static constexpr IEEE802_11_Bits edca_update_count{.first = 0, .count = 4};
    static constexpr IEEE802_11_Bits queue_request{.first = 5, .count = 1};
    static constexpr IEEE802_11_Bits txop_request{.first = 6, .count = 1};
};

}  // namespace nuv::ieee802_11
