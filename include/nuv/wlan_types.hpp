// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "nuv/export.hpp"

/// @file
/// Capabilities, states and modes of Wi-Fi interfaces.
///
/// Values are stored, compared and ordered by number. Texts are exact: case counts, nothing is
/// trimmed. For a value without enumerator enum_to_string gives the enumeration's text for invalid
/// values, for some with the number behind it; operator<< writes what enum_to_string gives.
/// string_to_enum accepts the enumerators' texts only and leaves `out` untouched when it returns
/// false.

namespace nuv {

/// What a radio or an interface is able to do.
enum class WLANCapability : std::uint8_t {
    WPA_PSK = 0,
    WPA_ENT = 1,
    WPA2_PSK = 2,
    WPA2_ENT = 3,
    WPS = 4,
    WME = 5,
    ATH = 6,
    PRIVACY = 7,
    STBC = 8,
    LDPC = 9,
    WME_PS = 10,
    TXBF = 11,
    PMF = 12,
    AMSDU = 13,
    AMPDU = 14,
    UAPSD = 15,
    MU_MIMO = 16,
    BAND_2GHZ = 17,
    BAND_5GHZ = 18,
    RRM = 19,
    FBT = 20,
    BTM = 21,
    N_2G_256QAM = 22,
    WPA3_PSK = 23,
    OWE = 24,
    OWE_TRANSITION = 25,
    NAC_1024QAM = 26,
    BAND_6GHZ = 27,
    MLO = 28,
    MINI = 29,
    NUV_WDS = 30,
    NUV = 31,
    INVALID = 32,
};
NUV_EXPORT std::string enum_to_string(WLANCapability value);
NUV_EXPORT bool string_to_enum(std::string_view text, WLANCapability& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, WLANCapability value);

/// State of a Wi-Fi interface.
enum class WLANIfaceState : std::uint8_t {
    UNCONFIGURED = 0,
    CONFIGURING = 1,
    INACTIVE = 2,
    INITIATING = 3,
    SCANNING = 4,
    DFS_WAIT = 5,
    ACS_ACTIVE = 6,
    WAIT_FOR_UPLINK = 7,
    UPLINK_ESTABLISHED = 8,
    WPS_ACTIVE = 9,
    ON_AIR = 10,
    DEACTIVATED = 11,
    SUPPRESSED = 12,
    CONFIGURED_FINAL = 13,
    INVALID = 14,
};
NUV_EXPORT std::string enum_to_string(WLANIfaceState value);
NUV_EXPORT bool string_to_enum(std::string_view text, WLANIfaceState& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, WLANIfaceState value);

/// Security mode of a BSS.
enum class WLANSecurity : std::uint8_t {
    UNDEFINED = 0,
    NONE = 1,
    WEP_OPEN = 2,
    WEP_SHARED = 3,
    WPAPSK = 4,
    WPA2PSK = 5,
    WPA_WPA2_MIXED = 6,
    WPAENT = 7,
    WPA2ENT = 8,
    WPA3PSK = 9,
    WPA2_WPA3_MIXED = 10,
    OWE = 11,
    INVALID = 12,
};
NUV_EXPORT std::string enum_to_string(WLANSecurity value);
NUV_EXPORT bool string_to_enum(std::string_view text, WLANSecurity& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, WLANSecurity value);

/// Operating mode of an interface. Value 4 is unassigned on purpose: it has no text.
enum class WLANOpmode : std::uint8_t {
    AP = 0,
    AP_GUEST = 1,
    ATACLIENT = 2,  ///< misspelt; peers and log readers match it
    WDS_REPEATER = 3,
    REPEATER = 5,
    HS_2_0 = 6,  ///< "HS_2.0"
    AP_OWE = 7,
    AP_GUEST_OWE = 8,
    HS_2_0_OWE = 9,  ///< "HS_2.0_OWE"
    STATION = 10,
    AP_UNSPECIFIED = 11,
    STATION_MLD = 12,
    AP_UNSPECIFIED_MLD = 13,
    AP_MLD = 14,
    AP_GUEST_MLD = 15,
    AP_HOTSPOT_MLD = 16,
    REPEATER_MLD = 17,
    INVALID = 18,
};
NUV_EXPORT std::string enum_to_string(WLANOpmode value);
NUV_EXPORT bool string_to_enum(std::string_view text, WLANOpmode& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, WLANOpmode value);

/// PHY mode, by the letters of its IEEE 802.11 amendment; the texts are in lower case.
enum class WLANPhymode : std::uint8_t {
    A = 0,
    B = 1,
    G = 2,
    N = 3,
    AC = 4,
    AX = 5,
    BE = 6,
    INVALID_MAX = 7,
};
NUV_EXPORT std::string enum_to_string(WLANPhymode value);
NUV_EXPORT bool string_to_enum(std::string_view text, WLANPhymode& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, WLANPhymode value);

/// Supported PHY modes, indexed by WLANPhymode.
using WLANPhymodeBits = std::bitset<7>;

/// Mode of multi-link operation (IEEE 802.11be).
enum class MLOMode : std::uint8_t {
    RESERVED_0 = 0,
    RESERVED_1 = 1,
    RESERVED_2 = 2,
    RESERVED_3 = 3,
    EMLMR = 4,
    EMLSR = 5,
    NSTR = 6,
    STR = 7,
    INVALID_MAX = 8,
};
NUV_EXPORT std::string enum_to_string(MLOMode value);
NUV_EXPORT bool string_to_enum(std::string_view text, MLOMode& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, MLOMode value);

/// Modes of multi-link operation, indexed by MLOMode.
using MLOModeBits = std::bitset<8>;

}  // namespace nuv
