// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_tid_to_link_mapping.hpp"

#include "tests/support/codecs.hpp"

namespace nuv::ieee802_11 {

using test::read_as;
using test::written;

using Mapping = IEEE802_11_TID_to_Link_Mapping;

TEST(TIDToLinkMapping, ControlOctetSaysWhatTheLengthMustHold) {
    for (unsigned control = 0; control < 256; ++control) {
        const std::size_t maps = (control & 4U) != 0 ? 0 : (control & 32U) != 0 ? 2 : 4;
        test::Octets octets{255, 0, 109, static_cast<std::uint8_t>(control), 0x81};
        octets.resize(4 + (maps != 0 ? 1U : 0U) + ((control & 8U) != 0 ? 2U : 0U) +
                      ((control & 16U) != 0 ? 3U : 0U) + maps);
        for (std::size_t surplus = 0; surplus < 3; ++surplus) {
            octets[1] = static_cast<std::uint8_t>(octets.size() - 2);
            const auto element = read_as<Mapping>(test::to_hex(octets));
            EXPECT_EQ(element.get_surplus().size(), surplus) << control;
            EXPECT_EQ(written(element), test::to_hex(octets));
            octets.push_back(0x55);
        }
        octets[1] = static_cast<std::uint8_t>(octets.size() - 2 - 4);
        Mapping refused;
        EXPECT_EQ(test::read_octets(test::to_hex(octets), refused), "Invalid length");
    }
}

TEST(TIDToLinkMapping, SettersMakeTheirPartPresentOrAbsent) {
    Mapping element;
    element.set_direction(Mapping::Direction::UPLINK);
    element.set_link_mapping_size(Mapping::LinkMappingSize::ONE_OCTET);
    element.set_expected_duration(0x123456);
    element.set_mapping_switch_time(0x789A);
    element.set_link_map(7, 0x06);
    element.set_link_map(0, 0x01);
    element.set_surplus({0xAA});
    EXPECT_EQ(written(element), "ff 0b 6d 39 81 9a 78 56 34 12 01 06 aa");
    EXPECT_EQ(element.get_link_map(7), 6);
    EXPECT_EQ(element.get_link_map(1), std::nullopt);
    EXPECT_EQ(element.get_link_map(8), std::nullopt);
    EXPECT_THROW(element.set_link_map(8, 1), std::out_of_range);

    element.set_link_map(7, 0x100);
    EXPECT_EQ(written(element), "Invalid length") << "a map of two octets";
    element.set_link_map(7, std::nullopt);
    element.set_expected_duration(0x1000000);
    EXPECT_EQ(written(element), "Invalid length") << "a duration of four";
    element.set_expected_duration(std::nullopt);
    element.set_mapping_switch_time(std::nullopt);
    EXPECT_EQ(written(element), "ff 05 6d 21 01 01 aa");
    element.set_default_link_mapping(true);
    EXPECT_EQ(written(element), "ff 03 6d 25 aa");
    element.set_link_map(3, 0x40);
    EXPECT_EQ(written(element), "ff 05 6d 21 08 40 aa");
}

TEST(TIDToLinkMapping, WhatCanBeReadNeedNotBeValid) {
    const std::pair<const char*, bool> rows[] = {
        {"ff 02 6d 06", true},
        {"ff 02 6d 07", false},             // reserved direction
        {"ff 03 6d 02 00", false},          // neither default nor maps
        {"ff 05 6d 02 01 00 40", true},     // link 14
        {"ff 05 6d 02 01 01 80", false},    // link 15
        {"ff 05 6d 22 81 01 00", false},    // a map without a link
        {"ff 06 6d e2 81 01 02 00", true},  // reserved bits and surplus count for nothing
    };
    for (const auto& [hex, valid] : rows) {
        EXPECT_EQ(read_as<Mapping>(hex).is_valid(), valid) << hex;
    }
}

}  // namespace nuv::ieee802_11
