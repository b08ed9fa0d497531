// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"

#include "tests/support/codec_checks.hpp"
#include "tests/support/codecs.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::ieee802_11 {
namespace {

using MultiLink = IEEE802_11_MultiLink;
using Profile = IEEE802_11_PerSTAProfile;
using test::read_as;
using test::written;

const MACAddress mld("02:4E:55:56:70:BE");

MultiLink sample(std::string_view name) {
    for (const test::Sample& sample : test::vectors("element_multi_link")) {
        if (sample.name.ends_with(name)) {
            return read_as<MultiLink>(test::to_hex(sample.octets));
        }
    }
    throw std::runtime_error("no such sample");
}

TEST(MultiLink, NamesEveryFieldOfTheCommonInfo) {
    const MultiLink element = sample("every_common_field");
    EXPECT_EQ(element.get_mld_mac_address(), mld);
    EXPECT_EQ(element.get_link_id(), 0xF1);
    EXPECT_EQ(element.get_bss_parameters_change_count(), 0x2A);
    EXPECT_EQ(element.get_medium_synchronization_delay(), 0x3F0A);
    EXPECT_EQ(element.get_eml_capabilities(), 0x0093);
    EXPECT_EQ(element.get_mld_capabilities(), 0x0261);
    EXPECT_EQ(element.get_ap_mld_id(), 5);
    EXPECT_EQ(element.get_extended_mld_capabilities(), 0x0060);
    EXPECT_EQ(sample("no_link_but_its_own").get_link_id(), std::nullopt);
    MultiLink other = sample("every_common_field");
    other.set_body(0x0011, {0x02, 0x00});
    EXPECT_EQ(other, sample("probe_request"));
    other.set_body(0x0011, {});
    EXPECT_EQ(written(other), "Invalid length");
    // Its bits mean something else in another type.
    EXPECT_EQ(sample("probe_request").get_link_id(), std::nullopt);
}

TEST(MultiLink, NamesEveryFieldOfAProfile) {
    const MultiLink element = sample("every_sta_field");
    const auto* profile = element.get_link_info().find<Profile>();
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->get_link_id(), 2);
    EXPECT_TRUE(profile->is_complete());
    EXPECT_EQ(profile->get_sta_mac_address(), MACAddress("02:4E:55:56:82:BE"));
    EXPECT_EQ(profile->get_beacon_interval(), 100);
    EXPECT_EQ(profile->get_tsf_offset(), -2);
    EXPECT_EQ(profile->get_dtim_info(), (Profile::DTIMInfo{1, 3}));
    EXPECT_EQ(profile->get_nstr_indication_bitmap(), 0x0104);
    EXPECT_EQ(profile->get_bss_parameters_change_count(), 0x2B);
    EXPECT_EQ(profile->get_capability_information(), 0x1111);
    EXPECT_TRUE(profile->get_elements().empty());
}

TEST(MultiLink, TypesTheElementsOfAProfileAsAFrameDoes) {
    const std::string station = test::to_hex(test::vectors("station_8").at(0).octets);
    const auto frame = read_as<AssocRequestFrame>(station.substr(3 * test::mac_header_length));
    const auto* element = frame.get_optional_element<MultiLink>();
    ASSERT_NE(element, nullptr);
    const auto& links = element->get_link_info();
    ASSERT_EQ(links.size(), 2U);
    // The first inherits the frame's HE Capabilities, the second has its own.
    const auto& first = dynamic_cast<const Profile&>(links[0]).get_elements();
    const auto* eht = first.find<IEEE802_11_EHTCapabilities>();
    ASSERT_NE(eht, nullptr);
    EXPECT_EQ(eht->get_320_mhz_mcs_nss_map().get_rx_max_nss(2), 2);
    EXPECT_NE(first.find<IEEE802_11_Non_Inheritance>(), nullptr);
    const auto& second = dynamic_cast<const Profile&>(links[1]).get_elements();
    EXPECT_EQ(second.find<IEEE802_11_EHTCapabilities>()->get_160_mhz_mcs_nss_map(),
              IEEE802_11_EHTCapabilities::EHT_MCS_NSS_MAP());
    EXPECT_EQ(test::field_text(*second.find<IEEE802_11_SupportedRatesBSSMembershipSelector>()),
              "supported_rates=[=130 =132 =139 =150 =12 =18 =24 =36 ]");
}

TEST(MultiLink, IsBuiltLinkByLink) {
    MultiLink element;
    element.set_mld_mac_address(mld);
    EXPECT_EQ(written(element), "ff 0a 6b 00 00 07 02 4e 55 56 70 be");
    element.set_mld_capabilities(0x0061);
    auto profile = std::make_unique<Profile>(2);
    profile->set_complete(true);
    profile->set_sta_mac_address(MACAddress("02:4E:55:56:82:BE"));
    profile->set_nstr_indication_bitmap(5);
    profile->set_tsf_offset(-2);
    profile->set_tsf_offset(std::nullopt);
    profile->set_capability_information(0x1111);
    auto non_inheritance = std::make_unique<IEEE802_11_Non_Inheritance>();
    non_inheritance->set_ids({IEEE802_11_Element_ID::HT_CAPABILITIES});
    EXPECT_EQ(written(*non_inheritance), "ff 05 38 01 2d 00");
    profile->get_elements().add_element(std::move(non_inheritance));
    element.get_link_info().add_element(std::move(profile));
    // Alone the element counts an octet more than it writes, in a profile its Length is the real one.
    EXPECT_EQ(written(element),
              "ff 20 6b 00 01 09 02 4e 55 56 70 be 61 00"
              " 00 12 32 02 08 02 4e 55 56 82 be 05 11 11 ff 04 38 01 2d 00");
    EXPECT_EQ(element.get_length(), 34U);

    EXPECT_THROW(Profile(16), std::invalid_argument);
    EXPECT_THROW(element.set_link_id(16), std::invalid_argument);
    EXPECT_EQ(element.get_link_id(), std::nullopt);
    auto rates = std::make_unique<IEEE802_11_SupportedRatesBSSMembershipSelector>();
    Profile refused;
    EXPECT_THROW(refused.get_elements().add_element(std::move(rates)),
                 serialization::SerializationException);
    EXPECT_TRUE(refused.get_elements().empty());
}

TEST(MultiLink, SurplusFollowsTheFieldsThatItKnows) {
    MultiLink element;
    element.set_link_id(15);
    element.set_common_info_surplus({0xAA, 0xBB});
    EXPECT_EQ(written(element), "ff 0d 6b 10 00 0a 00 00 00 00 00 00 0f aa bb");
    EXPECT_EQ(read_as<MultiLink>(written(element)).get_common_info_surplus(),
              (MultiLink::Surplus{0xAA, 0xBB}));
    element.set_common_info_surplus(test::Octets(248));
    EXPECT_EQ(written(element), "Invalid length");
    EXPECT_THROW(sample("probe_request").set_common_info_surplus({}), std::logic_error);

    auto profile = read_as<Profile>("00 02 01 00");
    profile.set_sta_info_surplus({0xCC});
    EXPECT_EQ(written(profile), "00 04 01 00 02 cc");
    EXPECT_EQ(read_as<Profile>(written(profile)).get_sta_info_surplus(), Profile::Surplus{0xCC});
    profile.set_sta_info_surplus(test::Octets(255));
    EXPECT_EQ(written(profile), "Invalid length");
}

TEST(MultiLink, StandsInANeighborReportUnderAnIdOfItsOwn) {
    const auto element =
        read_as("c9 0a 10 00 08 02 4e 55 56 70 be 03", MultiLink(MultiLink::Mode::NEIGHBOR_REPORT));
    EXPECT_EQ(element.get_link_id(), 3);
    EXPECT_EQ(written(element), "c9 0a 10 00 08 02 4e 55 56 70 be 03");
    MultiLink refused(MultiLink::Mode::NEIGHBOR_REPORT);
    EXPECT_EQ(test::read_octets("c9 03 01 00 00", refused),
              "Only Basic Multi-Link elements allowed in Neighbor Report");
    EXPECT_EQ(test::read_octets("ff 03 01 00 00", refused), "Invalid ID");
    EXPECT_EQ(test::read_octets("c9 08 00 00 07 02 4e 55 56 70", refused), "Invalid length");
    MultiLink probe = sample("probe_request");
    EXPECT_EQ(written(probe), "ff 05 6b 11 00 02 00");
    EXPECT_THROW(probe.set_mld_capabilities(3), std::logic_error);
    probe.set_mode(MultiLink::Mode::NEIGHBOR_REPORT);
    EXPECT_EQ(written(probe), "Only Basic Multi-Link elements allowed in Neighbor Report");
}

TEST(MultiLink, ContinuesNoLongerThanAFrameMay) {
    MultiLink refused;
    test::Octets octets;
    for (unsigned piece = 0; piece < 60; ++piece) {
        octets.insert(octets.end(), {static_cast<std::uint8_t>(piece == 0 ? 0xFF : 0xF2), 0xFF});
        octets.resize(octets.size() + 255, 0x6B);
    }
    EXPECT_EQ(test::read_octets(test::to_hex(octets), refused), "Invalid length");
}

}  // namespace
}  // namespace nuv::ieee802_11
