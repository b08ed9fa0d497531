// SPDX-License-Identifier: Apache-2.0
#include "nuv/wlan_types.hpp"

#include <gtest/gtest.h>

#include "support/enum_texts.hpp"

namespace {

using nuv::test::expect_texts;
using nuv::test::Number;

TEST(WLANTypes, TextsOfAllValues) {
    expect_texts<nuv::WLANCapability>(
        {"WPA_PSK|WPA_ENT|WPA2_PSK|WPA2_ENT|WPS|WME|ATH|PRIVACY|STBC|LDPC|WME_PS|TXBF|PMF|AMSDU|"
         "AMPDU|UAPSD|MU-MIMO|BAND_2GHz|BAND_5GHz|RRM|FBT|BTM|N_2G_256QAM|WPA3_PSK|OWE|"
         "OWE_TRANSITION|NAC_1024QAM|BAND_6GHz|MLO|MINI|NUV_WDS|NUV|INVALID",
         "INVALID"});
    expect_texts<nuv::WLANIfaceState>(
        {"UNCONFIGURED|CONFIGURING|INACTIVE|INITIATING|SCANNING|DFS_WAIT|ACS_ACTIVE|"
         "WAIT_FOR_UPLINK|UPLINK_ESTABLISHED|WPS_ACTIVE|ON_AIR|DEACTIVATED|SUPPRESSED|"
         "CONFIGURED_FINAL|INVALID",
         "INVALID WLAN INTERFACE STATE"});
    expect_texts<nuv::WLANSecurity>(
        {"UNDEFINED|NONE|WEP_OPEN|WEP_SHARED|WPAPSK|WPA2PSK|WPA_WPA2_MIXED|WPAENT|WPA2ENT|WPA3PSK|"
         "WPA2_WPA3_MIXED|OWE|INVALID",
         "INVALID WLAN SECURITY MODE"});
    expect_texts<nuv::WLANOpmode>(
        {"AP|AP_GUEST|ATACLIENT|WDS_REPEATER||REPEATER|HS_2.0|AP_OWE|AP_GUEST_OWE|HS_2.0_OWE|"
         "STATION|AP_UNSPECIFIED|STATION_MLD|AP_UNSPECIFIED_MLD|AP_MLD|AP_GUEST_MLD|"
         "AP_HOTSPOT_MLD|REPEATER_MLD|INVALID",
         "INVALID WLAN OPMODE ", Number::APPENDED});
    expect_texts<nuv::WLANPhymode>(
        {"a|b|g|n|ac|ax|be|INVALID_MAX", "INVALID WLAN PHYMODE ", Number::APPENDED});
    expect_texts<nuv::MLOMode>(
        {"RESERVED_0|RESERVED_1|RESERVED_2|RESERVED_3|EMLMR|EMLSR|NSTR|STR|INVALID_MAX",
         "INVALID_MAX"});
}

TEST(WLANTypes, OperatingModeFourHasNoText) {
    auto mode = nuv::WLANOpmode::AP;
    EXPECT_EQ(enum_to_string(static_cast<nuv::WLANOpmode>(4)), "INVALID WLAN OPMODE 4");
    EXPECT_FALSE(string_to_enum("INVALID WLAN OPMODE 4", mode));
    EXPECT_EQ(mode, nuv::WLANOpmode::AP);
}

TEST(WLANTypes, MisspeltClientModeIsKept) {
    auto mode = nuv::WLANOpmode::AP;
    EXPECT_TRUE(string_to_enum("ATACLIENT", mode));
    EXPECT_EQ(mode, nuv::WLANOpmode::ATACLIENT);
}

}  // namespace
