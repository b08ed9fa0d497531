// SPDX-License-Identifier: Apache-2.0
#include "nuv/wlan_types.hpp"

#include "internal/enum_table.hpp"

namespace nuv {
namespace impl {

template <>
struct EnumTexts<WLANCapability> {
    using enum WLANCapability;
    static constexpr EnumRow<WLANCapability> rows[] = {
        {WPA_PSK, "WPA_PSK"},
        {WPA_ENT, "WPA_ENT"},
        {WPA2_PSK, "WPA2_PSK"},
        {WPA2_ENT, "WPA2_ENT"},
        {WPS, "WPS"},
        {WME, "WME"},
        {ATH, "ATH"},
        {PRIVACY, "PRIVACY"},
        {STBC, "STBC"},
        {LDPC, "LDPC"},
        {WME_PS, "WME_PS"},
        {TXBF, "TXBF"},
        {PMF, "PMF"},
        {AMSDU, "AMSDU"},
        {AMPDU, "AMPDU"},
        {UAPSD, "UAPSD"},
        {MU_MIMO, "MU-MIMO"},
        {BAND_2GHZ, "BAND_2GHz"},
        {BAND_5GHZ, "BAND_5GHz"},
        {RRM, "RRM"},
        {FBT, "FBT"},
        {BTM, "BTM"},
        {N_2G_256QAM, "N_2G_256QAM"},
        {WPA3_PSK, "WPA3_PSK"},
        {OWE, "OWE"},
        {OWE_TRANSITION, "OWE_TRANSITION"},
        {NAC_1024QAM, "NAC_1024QAM"},
        {BAND_6GHZ, "BAND_6GHz"},
        {MLO, "MLO"},
        {MINI, "MINI"},
        {NUV_WDS, "NUV_WDS"},
        {NUV, "NUV"},
        {INVALID, "INVALID"},
        {OTHERWISE, "INVALID"},
    };
};

template <>
struct EnumTexts<WLANIfaceState> {
    using enum WLANIfaceState;
    static constexpr EnumRow<WLANIfaceState> rows[] = {
        {UNCONFIGURED, "UNCONFIGURED"},
        {CONFIGURING, "CONFIGURING"},
        {INACTIVE, "INACTIVE"},
        {INITIATING, "INITIATING"},
        {SCANNING, "SCANNING"},
        {DFS_WAIT, "DFS_WAIT"},
        {ACS_ACTIVE, "ACS_ACTIVE"},
        {WAIT_FOR_UPLINK, "WAIT_FOR_UPLINK"},
        {UPLINK_ESTABLISHED, "UPLINK_ESTABLISHED"},
        {WPS_ACTIVE, "WPS_ACTIVE"},
        {ON_AIR, "ON_AIR"},
        {DEACTIVATED, "DEACTIVATED"},
        {SUPPRESSED, "SUPPRESSED"},
        {CONFIGURED_FINAL, "CONFIGURED_FINAL"},
        {INVALID, "INVALID"},
        {OTHERWISE, "INVALID WLAN INTERFACE STATE"},
    };
};

template <>
struct EnumTexts<WLANSecurity> {
    using enum WLANSecurity;
    static constexpr EnumRow<WLANSecurity> rows[] = {
        {UNDEFINED, "UNDEFINED"},
        {NONE, "NONE"},
        {WEP_OPEN, "WEP_OPEN"},
        {WEP_SHARED, "WEP_SHARED"},
        {WPAPSK, "WPAPSK"},
        {WPA2PSK, "WPA2PSK"},
        {WPA_WPA2_MIXED, "WPA_WPA2_MIXED"},
        {WPAENT, "WPAENT"},
        {WPA2ENT, "WPA2ENT"},
        {WPA3PSK, "WPA3PSK"},
        {WPA2_WPA3_MIXED, "WPA2_WPA3_MIXED"},
        {OWE, "OWE"},
        {INVALID, "INVALID"},
        {OTHERWISE, "INVALID WLAN SECURITY MODE"},
    };
};

template <>
struct EnumTexts<WLANOpmode> {
    using enum WLANOpmode;
    static constexpr EnumRow<WLANOpmode> rows[] = {
        {AP, "AP"},
        {AP_GUEST, "AP_GUEST"},
        {ATACLIENT, "ATACLIENT"},
        {WDS_REPEATER, "WDS_REPEATER"},
        {REPEATER, "REPEATER"},
        {HS_2_0, "HS_2.0"},
        {AP_OWE, "AP_OWE"},
        {AP_GUEST_OWE, "AP_GUEST_OWE"},
        {HS_2_0_OWE, "HS_2.0_OWE"},
        {STATION, "STATION"},
        {AP_UNSPECIFIED, "AP_UNSPECIFIED"},
        {STATION_MLD, "STATION_MLD"},
        {AP_UNSPECIFIED_MLD, "AP_UNSPECIFIED_MLD"},
        {AP_MLD, "AP_MLD"},
        {AP_GUEST_MLD, "AP_GUEST_MLD"},
        {AP_HOTSPOT_MLD, "AP_HOTSPOT_MLD"},
        {REPEATER_MLD, "REPEATER_MLD"},
        {INVALID, "INVALID"},
        {OTHERWISE, "INVALID WLAN OPMODE ", RowKind::NUMBERED},
    };
};

template <>
struct EnumTexts<WLANPhymode> {
    using enum WLANPhymode;
    static constexpr EnumRow<WLANPhymode> rows[] = {
        {A, "a"},
        {B, "b"},
        {G, "g"},
        {N, "n"},
        {AC, "ac"},
        {AX, "ax"},
        {BE, "be"},
        {INVALID_MAX, "INVALID_MAX"},
        {OTHERWISE, "INVALID WLAN PHYMODE ", RowKind::NUMBERED},
    };
};

template <>
struct EnumTexts<MLOMode> {
    using enum MLOMode;
    static constexpr EnumRow<MLOMode> rows[] = {
        {RESERVED_0, "RESERVED_0"},
        {RESERVED_1, "RESERVED_1"},
        {RESERVED_2, "RESERVED_2"},
        {RESERVED_3, "RESERVED_3"},
        {EMLMR, "EMLMR"},
        {EMLSR, "EMLSR"},
        {NSTR, "NSTR"},
        {STR, "STR"},
        {INVALID_MAX, "INVALID_MAX"},
        {OTHERWISE, "INVALID_MAX"},
    };
};

}  // namespace impl

NUV_DEFINE_ENUM_TEXTS(WLANCapability)
NUV_DEFINE_ENUM_TEXTS(WLANIfaceState)
NUV_DEFINE_ENUM_TEXTS(WLANSecurity)
NUV_DEFINE_ENUM_TEXTS(WLANOpmode)
NUV_DEFINE_ENUM_TEXTS(WLANPhymode)
NUV_DEFINE_ENUM_TEXTS(MLOMode)

}  // namespace nuv
