// SPDX-License-Identifier: Apache-2.0
#include "internal/ieee802_11/element_factory.hpp"

#include <algorithm>
#include <array>

#include "nuv/ieee802_11/ieee802_11_dummy_element.hpp"
#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_extended_supported_rates_bss_membership_selector.hpp"
#include "nuv/ieee802_11/ieee802_11_extendend_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_ht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_mobility_domain.hpp"
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"
#include "nuv/ieee802_11/ieee802_11_multiple_mac_sublayers.hpp"
#include "nuv/ieee802_11/ieee802_11_non_inheritance.hpp"
#include "nuv/ieee802_11/ieee802_11_operating_mode_notification.hpp"
#include "nuv/ieee802_11/ieee802_11_power_capability.hpp"
#include "nuv/ieee802_11/ieee802_11_qos_capability.hpp"
#include "nuv/ieee802_11/ieee802_11_qos_traffic_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_rm_enabled_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_rsn_element.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_channels.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_operating_classes.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_rates_bss_membership_selector.hpp"
#include "nuv/ieee802_11/ieee802_11_tid_to_link_mapping.hpp"
#include "nuv/ieee802_11/ieee802_11_tim_broadcast_request.hpp"
#include "nuv/ieee802_11/ieee802_11_vht_capabilities.hpp"

namespace nuv::impl::factory {

using namespace ieee802_11;  // NOLINT(google-build-using-namespace): the table names each class

namespace {

using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;
using Maps = IEEE802_11_EHTMaps;

template <class E>
ElementPtr make(const Maps* /*maps*/) {
    return std::make_unique<E>();
}

ElementPtr make_eht_capabilities(const Maps* maps) {
    if (maps == nullptr) {
        return std::make_unique<IEEE802_11_DummyElement>(ID::ELEMENT_ID_EXTENSION);
    }
    return std::make_unique<IEEE802_11_EHTCapabilities>(*maps);
}

ElementPtr make_multi_link(const Maps* maps) {
    auto element = std::make_unique<IEEE802_11_MultiLink>();
    if (maps != nullptr) {
        element->inherit_eht_maps(*maps);
    }
    return element;
}

/// What a frame accepts: an element's place and the class that reads it, null for a raw one.
struct Row {
    std::uint16_t key;
    std::uint8_t slot;
    ElementPtr (*make)(const Maps* maps);
};

constexpr std::uint8_t no_slot = number_of_slots;

constexpr std::array<Row, 27> rows{{
    {key(ID::SUPPORTED_RATES), 0, make<IEEE802_11_SupportedRatesBSSMembershipSelector>},
    {key(ID::POWER_CAPABILITY), 2, make<IEEE802_11_PowerCapability>},
    {key(ID::SUPPORTED_CHANNELS), 3, make<IEEE802_11_SupportedChannels>},
    {key(ID::HT_CAPABILITIES), 9, make<IEEE802_11_HTCapabilities>},
    {key(ID::QOS_CAPABILITY), 5, make<IEEE802_11_QOSCapability>},
    {key(ID::RSN), 4, make<IEEE802_11_RSNElement>},
    {key(ID::EXTENDED_SUPPORTED_RATES), 1,
     make<IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector>},
    {key(ID::MOBILITY_DOMAIN), 7, make<IEEE802_11_MobilityDomain>},
    {key(ID::SUPPORTED_OPERATING_CLASSES), 8, make<IEEE802_11_SupportedOperatingClasses>},
    {key(ID::RM_ENABLED_CAPABILITIES), 6, make<IEEE802_11_RMEnabledCapabilities>},
    {key(ID::BSS_COEXISTENCE_20_40), 10, nullptr},
    {key(ID::QOS_TRAFFIC_CAPABILITY), 12, make<IEEE802_11_QoSTrafficCapabilities>},
    {key(ID::TIM_BROADCAST_REQUEST), 13, make<IEEE802_11_TIMBroadcastRequest>},
    {key(ID::INTERWORKING), 14, nullptr},
    {key(ID::EXTENDED_CAPABILITIES), 11, make<IEEE802_11_ExtendendCapabilities>},
    {key(ID::DMG_CAPABILITIES), 16, nullptr},
    {key(ID::MULTI_BAND), 15, nullptr},
    {key(ID::MULTIPLE_MAC_SUBLAYERS), 17, make<IEEE802_11_MultipleMACSublayers>},
    {key(ID::VHT_CAPABILITIES), 18, make<IEEE802_11_VHTCapabilities>},
    {key(ID::OPERATING_MODE_NOTIFICATION), 19, make<IEEE802_11_OperatingModeNotification>},
    {key(ID::RSN_EXTENSION), 21, nullptr},
    {key(Ext::HE_CAPABILITIES), 20, make<IEEE802_11_HECapabilities>},
    {key(Ext::NON_INHERITANCE), 22, make<IEEE802_11_Non_Inheritance>},
    {key(Ext::HE_6_GHZ_BAND_CAPABILITIES), 23, nullptr},
    {key(Ext::MULTI_LINK), 24, make_multi_link},
    {key(Ext::EHT_CAPABILITIES), 25, make_eht_capabilities},
    {key(Ext::TID_TO_LINK_MAPPING), no_slot, make<IEEE802_11_TID_to_Link_Mapping>},
}};
static_assert(std::ranges::is_sorted(rows, std::ranges::less{}, &Row::key));

/// The row of each key, or one past the last.
constexpr auto row_of_key = [] {
    std::array<std::uint8_t, number_of_keys> index{};
    index.fill(rows.size());
    for (std::size_t k = 0; k < rows.size(); ++k) {
        index[rows[k].key] = static_cast<std::uint8_t>(k);
    }
    return index;
}();

}  // namespace

constinit const SlotTable slot_table = [] {
    SlotTable slots{};
    slots.fill(no_slot);
    for (const Row& row : rows) {
        slots[row.key] = row.slot;
    }
    return slots;
}();

ElementPtr make_element(ID id, Ext extension, const Maps* maps) {
    const std::size_t row = row_of_key[key(id, extension)];
    if (row == rows.size() || rows[row].make == nullptr) {
        return std::make_unique<IEEE802_11_DummyElement>(id);
    }
    return rows[row].make(maps);
}

IEEE802_11_EHTMaps eht_maps(const IEEE802_11_HECapabilities& he) {
    // The HE Channel Width Set decides which EHT-MCS maps follow (IEEE Std 802.11be-2024,
    // 9.4.2.323.4): bit 1 is 40 MHz in 2.4 GHz, 2 is 40 and 80 MHz, 3 is 160 MHz, 4 is 80+80 MHz.
    const auto& phy = he.get_phy_info_bits();
    const bool only_20_mhz = !phy[1] && !phy[2] && !phy[3] && !phy[4];
    return {only_20_mhz, phy[1] || phy[2], phy[3]};
}

}  // namespace nuv::impl::factory
