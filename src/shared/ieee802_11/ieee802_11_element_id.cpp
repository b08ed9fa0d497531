// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_element_id.hpp"

#include "internal/enum_table.hpp"

namespace nuv::impl {

template <>
struct EnumTexts<ieee802_11::IEEE802_11_Element_ID> {
    using E = ieee802_11::IEEE802_11_Element_ID;
    static constexpr auto rows = std::to_array<EnumRow<E>>({
        {E::SSID, "SSID"},
        {E::SUPPORTED_RATES, "Supported Rates and BSS Membership Selectors"},
        {E::POWER_CAPABILITY, "Power Capability"},
        {E::SUPPORTED_CHANNELS, "Supported Channels"},
        {E::MEASUREMENT_REPORT, "Measurement Report"},
        {E::HT_CAPABILITIES, "HT Capabilities"},
        {E::QOS_CAPABILITY, "QoS Capability"},
        {E::RSN, "RSN"},
        {E::EXTENDED_SUPPORTED_RATES, "Extended Supported Rates and BSS Membership Selectors"},
        {E::NEIGHBOR_REPORT, "Neighbor Report"},
        {E::MOBILITY_DOMAIN, "Mobility Domain"},
        {E::SUPPORTED_OPERATING_CLASSES, "Supported Operating Classes"},
        {E::RM_ENABLED_CAPABILITIES, "RM Enabled Capabilities"},
        {E::BSS_COEXISTENCE_20_40, "20/40 BSS Coexistence"},
        {E::QOS_TRAFFIC_CAPABILITY, "QoS Traffic Capability"},
        {E::TIM_BROADCAST_REQUEST, "TIM Broadcast Request"},
        {E::INTERWORKING, "Interworking"},
        {E::EXTENDED_CAPABILITIES, "Extended Capabilities"},
        {E::DMG_CAPABILITIES, "DMG Capabilities"},
        {E::MULTI_BAND, "Multi-band"},
        {E::MULTIPLE_MAC_SUBLAYERS, "Multiple MAC Sublayers"},
        {E::VHT_CAPABILITIES, "VHT Capabilities"},
        {E::OPERATING_MODE_NOTIFICATION, "Operating Mode Notification"},
        {E::VENDOR_SPECIFIC, "Vendor Specific"},
        {E::RSN_EXTENSION, "RSN Extension"},
        {OTHERWISE, ""},
    });
};

template <>
struct EnumTexts<ieee802_11::IEEE802_11_Element_ID_Extension> {
    using E = ieee802_11::IEEE802_11_Element_ID_Extension;
    static constexpr auto rows = std::to_array<EnumRow<E>>({
        {E::HE_CAPABILITIES, "HE Capabilities"},
        {E::NON_INHERITANCE, "Non-Inheritance"},
        {E::HE_6_GHZ_BAND_CAPABILITIES, "HE 6 GHz Band Capabilities"},
        {E::EHT_OPERATION, "EHT Operation"},
        {E::MULTI_LINK, "Multi-Link"},
        {E::EHT_CAPABILITIES, "EHT Capabilities"},
        {E::TID_TO_LINK_MAPPING, "TID-To-Link Mapping"},
        {OTHERWISE, ""},
    });
};

}  // namespace nuv::impl

namespace nuv::ieee802_11 {

std::string ieee802_11_element_name(IEEE802_11_Element_ID id,
                                    IEEE802_11_Element_ID_Extension extension) {
    return id == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION ? impl::enum_text(extension)
                                                             : impl::enum_text(id);
}

}  // namespace nuv::ieee802_11
