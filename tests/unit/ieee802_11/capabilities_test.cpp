// SPDX-License-Identifier: Apache-2.0
// What is special about each of the capability elements; what holds for all is in the battery.
#include <gtest/gtest.h>

#include "nuv/ieee802_11.hpp"
#include "support/elements.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::as_written;
using test::read_as;

using HE = IEEE802_11_HECapabilities;
using EHT = IEEE802_11_EHTCapabilities;
using Operation = IEEE802_11_EHTOperation;
using Extended = IEEE802_11_ExtendendCapabilities;

/// Octets `first`, `first` + 1 and so on, so that each stands for itself.
std::string count_from(unsigned first, std::size_t n) {
    test::Octets octets(n);
    for (std::size_t k = 0; k < n; ++k) {
        octets[k] = static_cast<std::uint8_t>(first + k);
    }
    return test::to_hex(octets);
}

TEST(Capabilities, FieldsStandInWireOrder) {
    const auto ht = read_as<IEEE802_11_HTCapabilities>("2d 1a " + count_from(1, 26));
    EXPECT_EQ(ht.get_info_bits(), 0x0201);
    EXPECT_EQ(ht.get_ampdu_bits(), 0x03);
    EXPECT_EQ(ht.get_mcs_bits() >> 120, std::bitset<128>(0x13));
    EXPECT_EQ(ht.get_extended_bits(), 0x1514);
    EXPECT_EQ(ht.get_tbf_bits(), 0x19181716);
    EXPECT_EQ(ht.get_asel_bits(), 0x1A);
    const auto vht = read_as<IEEE802_11_VHTCapabilities>("bf 0c " + count_from(1, 12));
    EXPECT_EQ(vht.get_info_bits(), 0x04030201);
    EXPECT_EQ(vht.get_supported_bits(), std::bitset<64>(0x0C0B0A0908070605));
    const auto rm = read_as<IEEE802_11_RMEnabledCapabilities>("46 05 73 d0 00 00 0c");
    EXPECT_EQ(rm.get_capabilities(), std::bitset<40>(0x0C0000D073));
}

TEST(HECapabilities, PhyBitsThreeAndFourBringTheWideMaps) {
    for (unsigned phy = 0; phy < 32; ++phy) {
        const bool has_160 = (phy & 8U) != 0;
        const bool has_80_80 = (phy & 16U) != 0;
        const std::size_t maps = 4 + (has_160 ? 4U : 0U) + (has_80_80 ? 4U : 0U);
        const auto element =
            read_as<HE>(test::to_hex({0xFF, static_cast<std::uint8_t>(18 + maps), 35}) +
                        count_from(1, 6) + test::to_hex({static_cast<std::uint8_t>(phy)}) +
                        count_from(0x21, 10) + count_from(0x41, maps) + "ff");
        EXPECT_EQ(element.get_length(), 20 + maps);
        EXPECT_EQ(element.get_rx_mcs_leq_80_mhz(), 0x4241);
        EXPECT_EQ(element.get_tx_mcs_160_mhz(), has_160 ? 0x4847 : 0);
        EXPECT_EQ(element.get_rx_mcs_80_80_mhz(), !has_80_80 ? 0 : has_160 ? 0x4A49 : 0x4645);
        EXPECT_TRUE(element.get_ppe_threshold_field_dummy().empty())
            << "what follows the element is not its";
    }
}

TEST(EHTCapabilities, FlagsAndPhyBitOneBringTheMaps) {
    for (unsigned flags = 0; flags < 16; ++flags) {
        const bool has_320 = (flags & 8U) != 0;
        const std::size_t maps = ((flags & 1U) != 0 ? 4U : 0U) + ((flags & 2U) != 0 ? 3U : 0U) +
                                 ((flags & 4U) != 0 ? 3U : 0U) + (has_320 ? 3U : 0U);
        const std::string hex = test::to_hex({0xFF, static_cast<std::uint8_t>(13 + maps), 108}) +
                                " 01 02 " + (has_320 ? "02 " : "00 ") + count_from(0x21, 8) + " " +
                                count_from(0x41, maps + 1);
        const auto element =
            read_as(hex, EHT((flags & 1U) != 0, (flags & 2U) != 0, (flags & 4U) != 0));
        EXPECT_EQ(as_written(element), hex);
        EXPECT_EQ(element.get_20_mhz_only_non_ap_sta_mcs_nss_map(),
                  (flags & 1U) != 0 ? 0x41424344U : 0U)
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
    EXPECT_NE(map, EHT::EHT_MCS_NSS_MAP(0x654322));
    EHT element(false, true, false);
    element.set_less_or_equal_80_mhz_mcs_nss_map(map);
    EXPECT_EQ(as_written(element), "ff 0f 6c 00 00 00 00 00 00 00 00 00 00 00 21 43 65");
}

TEST(EHTOperation, BitmapIsHonouredWithoutTheInformation) {
    const auto operation = read_as<Operation>("ff 08 6a 02 11 22 33 44 aa bb");
    EXPECT_EQ(operation.get_length(), 10U);
    EXPECT_EQ(operation.get_basic_mcs_nss_set(), 0x11223344U) << "most significant octet first";
    EXPECT_EQ(operation.get_disabled_subchannel_bitmap(), 0xAABB);
}

TEST(EHTOperation, SettersMakeTheirPartPresent) {
    using Width = IEEE802_11_EHTOperationChannelWidthValue;
    const Operation full(0, 0x11223344, Width::WIDTH_320, 2, 3, 0xAABB);
    EXPECT_EQ(as_written(full), "ff 0b 6a 03 11 22 33 44 04 02 03 aa bb");
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
        EXPECT_EQ(test::from_hex(as_written(element)).size(), 2 + bit / 8 + 1);
    }
    EXPECT_EQ(as_written(Extended()), "7f 00");
}

TEST(ExtendedCapabilities, ExtraOctetsKeepAllTen) {
    Extended element;
    element.set_extra_bytes({7});
    EXPECT_EQ(as_written(element), "7f 0b 00 00 00 00 00 00 00 00 00 00 07");
    element.set_extra_bytes(std::vector<std::uint8_t>(246));
    EXPECT_EQ(as_written(element), "Invalid length");
}

}  // namespace
}  // namespace nuv::ieee802_11
