// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_eht_operation.hpp"
#include "nuv/ieee802_11/ieee802_11_extendend_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_ht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_rm_enabled_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_vht_capabilities.hpp"
#include "support/elements.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::expect_round_trip;
using test::read_element;
using test::read_error;
using test::write_element;
using test::write_error;

using HE = IEEE802_11_HECapabilities;
using EHT = IEEE802_11_EHTCapabilities;
using Operation = IEEE802_11_EHTOperation;
using Extended = IEEE802_11_ExtendendCapabilities;

/// Octets 1, 2, 3 and so on, so that each stands for itself.
std::string count_from(unsigned first, std::size_t n) {
    test::Octets octets;
    for (std::size_t k = 0; k < n; ++k) {
        octets.push_back(static_cast<std::uint8_t>(first + k));
    }
    return test::to_hex(octets);
}

TEST(HTCapabilities, FieldsStandInWireOrder) {
    const auto ht = expect_round_trip<IEEE802_11_HTCapabilities>("2d 1a " + count_from(1, 26));
    EXPECT_EQ(ht.get_info_bits(), 0x0201);
    EXPECT_EQ(ht.get_ampdu_bits(), 0x03);
    EXPECT_EQ(ht.get_mcs_bits() >> 120, std::bitset<128>(0x13));
    EXPECT_EQ(ht.get_extended_bits(), 0x1514);
    EXPECT_EQ(ht.get_tbf_bits(), 0x19181716);
    EXPECT_EQ(ht.get_asel_bits(), 0x1A);
    expect_round_trip<IEEE802_11_HTCapabilities>("2d 1e " + count_from(1, 30),
                                                 "2d 1a " + count_from(1, 26));
}

TEST(VHTCapabilities, FieldsStandInWireOrder) {
    const auto vht = expect_round_trip<IEEE802_11_VHTCapabilities>("bf 0c " + count_from(1, 12));
    EXPECT_EQ(vht.get_info_bits(), 0x04030201);
    EXPECT_EQ(vht.get_supported_bits(), std::bitset<64>(0x0C0B0A0908070605));
}

TEST(RMEnabledCapabilities, AreFortyBits) {
    const auto rm = expect_round_trip<IEEE802_11_RMEnabledCapabilities>("46 05 73 d0 00 00 0c");
    EXPECT_EQ(rm.get_capabilities(), std::bitset<40>(0x0C0000D073));
}

/// HE Capabilities with these octets: MAC information 01.., PHY information with `phy`, then
/// `rest`.
std::string he(std::uint8_t phy, const std::string& rest, std::size_t rest_size) {
    return test::to_hex({0xFF, static_cast<std::uint8_t>(1 + 6 + 11 + rest_size), 35}) + " " +
           count_from(1, 6) + " " + test::to_hex({phy}) + " " + count_from(0x21, 10) + " " + rest;
}

TEST(HECapabilities, PhyBitsThreeAndFourBringTheWideMaps) {
    for (unsigned phy = 0; phy < 32; ++phy) {
        const bool has_160 = (phy & 8U) != 0;
        const bool has_80_80 = (phy & 16U) != 0;
        const std::size_t maps = 4 + (has_160 ? 4U : 0U) + (has_80_80 ? 4U : 0U);
        const auto element =
            expect_round_trip<HE>(he(static_cast<std::uint8_t>(phy), count_from(0x41, maps), maps));
        EXPECT_EQ(element.get_length(), 20 + maps);
        EXPECT_EQ(element.get_rx_mcs_leq_80_mhz(), 0x4241);
        EXPECT_EQ(element.get_tx_mcs_160_mhz(), has_160 ? 0x4847 : 0);
        EXPECT_EQ(element.get_rx_mcs_80_80_mhz(), !has_80_80 ? 0 : has_160 ? 0x4A49 : 0x4645);
        EXPECT_TRUE(element.get_ppe_threshold_field_dummy().empty())
            << "what follows the element is not its";
    }
}

TEST(HECapabilities, ThresholdsTakeTheRest) {
    const auto element = expect_round_trip<HE>(he(0, count_from(0x41, 7), 7));
    EXPECT_EQ(element.get_ppe_threshold_field_dummy(), (HE::PPEThresholds{0x45, 0x46, 0x47}));
}

TEST(HECapabilities, RereadingForgetsWhatIsAbsentNow) {
    HE used;
    EXPECT_EQ(read_element(used, he(0x18, count_from(0x41, 15), 15)), "");
    EXPECT_EQ(read_element(used, he(0, count_from(0x41, 4), 4)), "");
    EXPECT_TRUE(used == expect_round_trip<HE>(he(0, count_from(0x41, 4), 4)));
}

TEST(EHTCapabilities, FlagsAndPhyBitOneBringTheMaps) {
    for (unsigned flags = 0; flags < 16; ++flags) {
        const bool only_20 = (flags & 1U) != 0;
        const bool up_to_80 = (flags & 2U) != 0;
        const bool has_160 = (flags & 4U) != 0;
        const bool has_320 = (flags & 8U) != 0;
        const std::size_t maps =
            (only_20 ? 4U : 0U) + (up_to_80 ? 3U : 0U) + (has_160 ? 3U : 0U) + (has_320 ? 3U : 0U);
        const std::string hex =
            test::to_hex({0xFF, static_cast<std::uint8_t>(12 + maps + 1), 108}) + " 01 02 " +
            (has_320 ? "02 " : "00 ") + count_from(0x21, 8) + " " + count_from(0x41, maps + 1);
        EHT element(only_20, up_to_80, has_160);
        EXPECT_EQ(read_element(element, hex), "");
        EXPECT_EQ(write_element(element), hex);
        EXPECT_EQ(element.get_20_mhz_only_non_ap_sta_mcs_nss_map(), only_20 ? 0x41424344U : 0U)
            << "most significant octet first";
        EXPECT_EQ(element.get_ppe_threshold_field_dummy().size(), 1U);
    }
}

TEST(EHTCapabilities, LowFourBitsOfTheMapMakeItPresent) {
    EHT element;
    element.set_20_mhz_only_non_ap_sta_mcs_nss_map(0x10);
    EXPECT_EQ(element.get_length(), 14U);
    element.set_20_mhz_only_non_ap_sta_mcs_nss_map(0x01);
    EXPECT_EQ(element.get_length(), 18U);
}

TEST(EHTCapabilities, MapIsSixNibblesLowestFirst) {
    const EHT::EHT_MCS_NSS_MAP map(0xFF654321);
    EXPECT_EQ(std::bitset<24>(map), 0x654321);
    EXPECT_EQ(map.get_rx_max_nss(0), 1);
    EXPECT_EQ(map.get_tx_max_nss(2), 6);
    EXPECT_EQ(map, EHT::EHT_MCS_NSS_MAP(0x654321));
    EXPECT_NE(map, EHT::EHT_MCS_NSS_MAP(0x654322));
    EHT element(false, true, false);
    element.set_less_or_equal_80_mhz_mcs_nss_map(map);
    EXPECT_EQ(write_element(element), "ff 0f 6c 00 00 00 00 00 00 00 00 00 00 00 21 43 65");
}

TEST(EHTOperation, BitmapIsHonouredWithoutTheInformation) {
    const auto operation = expect_round_trip<Operation>("ff 08 6a 02 11 22 33 44 aa bb");
    EXPECT_EQ(operation.get_length(), 10U);
    EXPECT_EQ(operation.get_basic_mcs_nss_set(), 0x11223344U) << "most significant octet first";
    EXPECT_EQ(operation.get_disabled_subchannel_bitmap(), 0xAABB);
    EXPECT_EQ(expect_round_trip<Operation>("ff 09 6a 01 11 22 33 44 07 02 03")
                  .get_control_channel_width_value(),
              IEEE802_11_EHTOperationChannelWidthValue{7})
        << "any octet is carried";
    expect_round_trip<Operation>("ff 06 6a 00 11 22 33 44");
}

TEST(EHTOperation, SettersMakeTheirPartPresent) {
    using Width = IEEE802_11_EHTOperationChannelWidthValue;
    const Operation full(0, 0x11223344, Width::WIDTH_320, 2, 3, 0xAABB);
    EXPECT_EQ(write_element(full), "ff 0b 6a 03 11 22 33 44 04 02 03 aa bb");
    Operation operation;
    operation.set_ccfs1(9);
    EXPECT_EQ(operation.get_eht_operation_parameters(), 0b01);
    operation.set_disabled_subchannel_bitmap(1);
    EXPECT_EQ(operation.get_eht_operation_parameters(), 0b11);
    operation.set_eht_operation_parameters(0b100);
    EXPECT_EQ(operation.get_length(), 8U) << "replaced as given";
    operation.set_control_channel_width_value(Width::WIDTH_40);
    EXPECT_EQ(operation.get_eht_operation_parameters(), 0b101);
}

TEST(ExtendedCapabilities, TrailingZerosAreNotSent) {
    for (std::size_t bit = 0; bit < 80; ++bit) {
        Extended element;
        element.set_capabilities(Extended::Capabilities(1) << bit);
        EXPECT_EQ(element.bytes_to_send(), bit / 8 + 1);
        EXPECT_EQ(write_element(element).size(), 3 * (2 + bit / 8 + 1) - 1);
    }
    EXPECT_EQ(write_element(Extended()), "7f 00");
    expect_round_trip<Extended>("7f 01 01");
    expect_round_trip<Extended>("7f 08 04 00 08 00 00 00 00 00", "7f 03 04 00 08");
}

TEST(ExtendedCapabilities, ExtraOctetsKeepAllTen) {
    expect_round_trip<Extended>("7f 0b 01 00 00 00 00 00 00 00 00 00 00");
    const auto element = expect_round_trip<Extended>("7f 0c " + count_from(1, 12));
    EXPECT_EQ(element.get_extra_bytes(), (Extended::ExtraBytes{0x0B, 0x0C}));
    Extended used = element;
    EXPECT_EQ(read_element(used, "7f 00"), "");
    EXPECT_TRUE(used == Extended());
    used.set_extra_bytes(std::vector<std::uint8_t>(246));
    EXPECT_EQ(write_error(used), "Invalid length");
}

}  // namespace
}  // namespace nuv::ieee802_11
