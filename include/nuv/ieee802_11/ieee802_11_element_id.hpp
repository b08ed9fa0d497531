// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "nuv/export.hpp"

namespace nuv::ieee802_11 {

/// Element IDs (IEEE Std 802.11-2020, 9.4.2.1), as far as the library knows them by name. Every
/// other value of an octet is as good.
enum class NUV_EXPORT IEEE802_11_Element_ID : std::uint8_t {
    SSID = 0,
    SUPPORTED_RATES = 1,
    POWER_CAPABILITY = 33,
    SUPPORTED_CHANNELS = 36,
    MEASUREMENT_REPORT = 39,
    HT_CAPABILITIES = 45,
    QOS_CAPABILITY = 46,
    RSN = 48,
    EXTENDED_SUPPORTED_RATES = 50,
    NEIGHBOR_REPORT = 52,
    MOBILITY_DOMAIN = 54,
    SUPPORTED_OPERATING_CLASSES = 59,
    RM_ENABLED_CAPABILITIES = 70,
    BSS_COEXISTENCE_20_40 = 72,
    QOS_TRAFFIC_CAPABILITY = 89,
    TIM_BROADCAST_REQUEST = 94,
    INTERWORKING = 107,
    EXTENDED_CAPABILITIES = 127,
    DMG_CAPABILITIES = 148,
    MULTI_BAND = 158,
    MULTIPLE_MAC_SUBLAYERS = 170,
    VHT_CAPABILITIES = 191,
    OPERATING_MODE_NOTIFICATION = 199,
    /// A Multi-Link element as subelement of a Neighbor Report; no element of its own.
    BASIC_MULTI_LINK_SUBELEMENT = 201,
    VENDOR_SPECIFIC = 221,
    RSN_EXTENSION = 244,
    ELEMENT_ID_EXTENSION = 255,
};

/// Element ID Extensions of elements with ID 255 (IEEE Std 802.11-2020, 9.4.2.1, and 802.11be).
enum class NUV_EXPORT IEEE802_11_Element_ID_Extension : std::uint8_t {
    HE_CAPABILITIES = 35,
    NON_INHERITANCE = 56,
    HE_6_GHZ_BAND_CAPABILITIES = 59,
    EHT_OPERATION = 106,
    MULTI_LINK = 107,
    EHT_CAPABILITIES = 108,
    TID_TO_LINK_MAPPING = 109,
    /// What every element with another ID than 255 reports. The air knows 110 as an extension, too;
    /// such an element is read as a raw one like any other unknown.
    NO_EXTENSION = 110,
};

/// The element's name in the standard, for people; empty for one that the library does not know.
/// `extension` counts only for ID 255.
NUV_EXPORT std::string ieee802_11_element_name(IEEE802_11_Element_ID id,
                                               IEEE802_11_Element_ID_Extension extension);

}  // namespace nuv::ieee802_11
