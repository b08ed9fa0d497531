// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_neighbor_report.hpp"

#include "nuv/ieee802_11/ieee802_11_dummy_element.hpp"
#include "tests/support/codec_checks.hpp"
#include "tests/support/codecs.hpp"

namespace nuv::ieee802_11 {
namespace {

using Report = IEEE802_11_NeighborReport;
using Preference = Report::BSSTransitionCandidatePreference;
using Dummy = Report::DummySubElement;
using SubID = IEEE802_11_NeigborReportSubelem_ID;

static_assert(!std::is_copy_constructible_v<Report> && std::is_move_constructible_v<Report>);

const MACAddress bssid("00:11:22:33:44:55");
const std::string fixed = "00 11 22 33 44 55 8f 04 00 00 51 06 07";

TEST(NeighborReport, IsBuiltWithAndWithoutSubelements) {
    EXPECT_EQ(test::written(Report(bssid, 0x48F, 81, 6, PHYType::HT)), "34 0d " + fixed);
    Report report(bssid, 0x48F, 81, 6, PHYType::HT, std::make_unique<Preference>(std::uint8_t{9}));
    EXPECT_EQ(test::written(report), "34 10 " + fixed + " 03 01 09");

    Report::SubElementList list;
    list.push_back(std::make_unique<Dummy>(SubID{2}, IEEE802_11_Body{0x41}));
    list.push_back(std::move(report.sub_elements().front()));
    const Report both(bssid, 0x48F, 81, 6, PHYType::HT, std::move(list));
    EXPECT_EQ(test::written(both), "34 13 " + fixed + " 02 01 41 03 01 09");
    EXPECT_EQ(both, test::read_as<Report>("34 13 " + fixed + " 02 01 41 03 01 09"));

    report.sub_elements().clear();
    Report set;
    set.set_bssid(bssid);
    set.set_bssid_information(0x48F);
    set.set_operating_class(81);
    set.set_channel_number(6);
    EXPECT_NE(set, report);
    set.set_phy_type(PHYType::HT);
    EXPECT_EQ(set, report);
}

TEST(NeighborReport, FindsTheFirstSubelementOfAnID) {
    const auto report = test::read_as<Report>("34 13 " + fixed + " 03 01 64 03 01 ff");
    const auto* first = dynamic_cast<const Preference*>(
        report.get_first_sub_element_by_id(SubID::BSS_TRANSITION_CANDIDATE_PREFERENCE));
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->get_preference(), 100);
    EXPECT_EQ(report.get_first_sub_element_by_id(SubID::BASIC_MULTI_LINK), nullptr);
    EXPECT_EQ(report.get_first_sub_element_by_id(SubID{0}), nullptr);
}

TEST(NeighborReport, SubelementsOfDifferentClassesAreNotEqualWhateverTheirOctets) {
    const Preference preference(9);
    const Dummy dummy(SubID{3}, IEEE802_11_Body{9});
    EXPECT_EQ(test::written(preference), test::written(dummy));
    EXPECT_FALSE(preference == dummy);
    EXPECT_FALSE(dummy == preference);
    EXPECT_NE(preference, Preference(8));
    EXPECT_NE(dummy, Dummy(SubID{4}, IEEE802_11_Body{9}));
    EXPECT_NE(dummy, Dummy(SubID{3}, IEEE802_11_Body{8}));
}

TEST(NeighborReport, BasicMultiLinkIsASubelementOfItsOwnFraming) {
    using MultiLink = Report::BasicMultiLinkSubElement;
    const MACAddress mld("02:11:22:33:44:55");
    const MultiLink plain(mld);
    EXPECT_EQ(plain.get_length(), 11U);
    EXPECT_EQ(test::written(plain), "c9 09 00 00 07 02 11 22 33 44 55");

    IEEE802_11_MultiLink element;
    element.set_mld_mac_address(mld);
    element.set_link_id(2);
    const MultiLink with_link(std::move(element));
    EXPECT_EQ(test::written(with_link), "c9 0a 10 00 08 02 11 22 33 44 55 02");
    EXPECT_NE(with_link, plain);

    const auto report =
        test::read_as<Report>("34 1b " + fixed + " c9 0a 10 00 08 02 11 22 33 44 55 02 46 00");
    const auto* found =
        dynamic_cast<const MultiLink*>(report.get_first_sub_element_by_id(SubID::BASIC_MULTI_LINK));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, with_link);
    EXPECT_EQ(found->get_basic_multi_link_element().get_link_id(), 2);

    IEEE802_11_MultiLink probe;
    probe.set_body(1, {});
    EXPECT_EQ(test::message_of([&] { MultiLink refused(std::move(probe)); }),
              "Multi-Link Element must be of basic type");
}

TEST(NeighborReport, SumOfItsSubelementsIsKeptInEightBits) {
    Report report;
    for (const std::size_t size : {240U, 241U, 253U, 254U, 255U}) {
        report.sub_elements().clear();
        report.sub_elements().push_back(
            std::make_unique<Dummy>(SubID{221}, std::vector<std::uint8_t>(size)));
        EXPECT_EQ(report.get_length(), 15 + (size + 2) % 256);
        const auto octets = test::from_hex(test::written(report));
        EXPECT_EQ(octets.size(), 17 + size);
        EXPECT_EQ(octets[1], (octets.size() - 2) % 256);
    }
    EXPECT_EQ(test::written(Dummy(SubID{221}, std::vector<std::uint8_t>(256))), "Invalid length");
}

TEST(NeighborReport, SubelementsAreCheckedBeforeAnythingIsWritten) {
    IEEE802_11_MultiLink links;
    links.get_link_info().add_element(
        std::make_unique<IEEE802_11_DummyElement>(IEEE802_11_Element_ID{2}, std::uint16_t{250}));
    Report::SubElementPtr refused[] = {
        std::make_unique<Dummy>(SubID{2}, std::vector<std::uint8_t>(256)),
        std::make_unique<Report::BasicMultiLinkSubElement>(std::move(links))};
    for (auto& sub : refused) {
        Report report({}, {}, 0, 0, {}, std::make_unique<Preference>(std::uint8_t{9}));
        report.sub_elements().push_back(std::move(sub));
        EXPECT_EQ(test::written(report), "Invalid length");
    }
}

TEST(NeighborReport, RefusesNullSubelements) {
    Report report;
    report.sub_elements().emplace_back();
    const std::function<void()> uses[] = {
        [] { Report({}, {}, 0, 0, {}, Report::SubElementPtr()); },
        [] { Report({}, {}, 0, 0, {}, Report::SubElementList(1)); },
        [&] { report.get_length(); },
        [&] { test::written(report); },
        [&] { report.get_first_sub_element_by_id(SubID{3}); },
        [&] { test::field_text(report); },
        [&] { EXPECT_EQ(report, report); },
        [&] { std::ostringstream() << report; },
        [] { IEEE802_11_ElementSequence().add_element(nullptr); },
    };
    for (const auto& use : uses) {
        EXPECT_THROW(use(), std::invalid_argument) << &use - uses;
    }
}

TEST(NeighborReport, PartsCheckTheirIdentifiers) {
    Preference preference;
    EXPECT_EQ(test::read_octets("04", preference), "Invalid ID");
    EXPECT_EQ(test::read_octets("03 02 00 00", preference), "Invalid length");
    EXPECT_EQ(test::read_as<Dummy>("27 02 aa bb cc", Dummy(SubID{1})),
              Dummy(SubID{39}, (IEEE802_11_Body{0xAA, 0xBB})));
}

}  // namespace
}  // namespace nuv::ieee802_11
