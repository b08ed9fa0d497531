// SPDX-License-Identifier: Apache-2.0
// What is special about each of the simple elements; what holds for all of them is in the battery.
#include <gtest/gtest.h>

#include "nuv/ieee802_11.hpp"
#include "support/elements.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::as_written;
using test::read_as;

using Rates = IEEE802_11_SupportedRatesBSSMembershipSelector;
using ExtendedRates = IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector;
using Classes = IEEE802_11_SupportedOperatingClasses;
using NonInheritance = IEEE802_11_Non_Inheritance;
using Power = IEEE802_11_PowerCapability;
using QoS = IEEE802_11_QOSCapability;
using Traffic = IEEE802_11_QoSTrafficCapabilities;
using TIM = IEEE802_11_TIMBroadcastRequest;
using Mode = IEEE802_11_OperatingModeNotification;
using Sublayers = IEEE802_11_MultipleMACSublayers;
using Mapping = IEEE802_11_TID_to_Link_Mapping;
using Dummy = IEEE802_11_DummyElement;
using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;
using Bytes = std::vector<std::uint8_t>;

TEST(SupportedRates, HoldOneToEightRates) {
    EXPECT_EQ(read_as<Rates>("01 02 82 84").get_supported_rates(), (Rates::Rates{0x82, 0x84}));
    Rates rates;
    rates.set_supported_rates({1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_EQ(as_written(rates), "Invalid size");
}

TEST(SupportedRates, EmptyListIsReadButNotWritten) {
    Rates rates;
    rates.set_supported_rates({1});
    rates = read_as("01 00", rates);
    EXPECT_TRUE(rates.get_supported_rates().empty());
    EXPECT_EQ(as_written(rates), "Invalid size");
}

TEST(ExtendedSupportedRates, HoldOneTo255RatesOnWriting) {
    ExtendedRates rates;
    EXPECT_EQ(as_written(rates), "Invalid size");
    rates.set_extended_supported_rates(Bytes(256));
    EXPECT_EQ(as_written(rates), "Invalid size");
}

TEST(MobilityDomain, WritesItsIdentifierMostSignificantOctetFirst) {
    IEEE802_11_MobilityDomain element;
    element.set_mdid(0x1234);
    element.set_capabilities(0b10);
    EXPECT_EQ(as_written(element), "36 03 12 34 02");
    EXPECT_EQ(read_as<IEEE802_11_MobilityDomain>("36 03 12 34 02").get_mdid(), 0x1234);
}

TEST(StandardValues, AreTheLibrarysWithTheirOctetsInReverse) {
    const auto check = [](auto object, const std::string& hex, auto get, auto set, unsigned value) {
        serialization::SerializationContext ctx;
        object.deserialize(test::from_hex(hex), ctx);
        EXPECT_EQ((object.*get)(), value) << hex;
        (object.*set)(0);
        (object.*set)(static_cast<decltype((object.*get)())>(value));
        EXPECT_EQ(test::written(object), hex);
    };
    using Frame = AssocRequestFrame;
    check(Frame(), "00 00 0a 01 00 00", &Frame::get_listen_interval_standard,
          &Frame::set_listen_interval_standard, 0x010A);
    using Domain = IEEE802_11_MobilityDomain;
    check(Domain(), "36 03 34 12 02", &Domain::get_mdid_standard, &Domain::set_mdid_standard,
          0x1234);
    using Operation = IEEE802_11_EHTOperation;
    check(Operation(), "ff 08 6a 02 44 33 22 11 0c 30", &Operation::get_basic_mcs_nss_set_standard,
          &Operation::set_basic_mcs_nss_set_standard, 0x11223344);
    check(Operation(), "ff 08 6a 02 44 33 22 11 0c 30",
          &Operation::get_disabled_subchannel_bitmap_standard,
          &Operation::set_disabled_subchannel_bitmap_standard, 0x300C);
    using EHT = IEEE802_11_EHTCapabilities;
    check(EHT(true, false, false), "ff 10 6c 00 00 00 00 00 00 00 00 00 00 00 22 11 01 00",
          &EHT::get_20_mhz_only_non_ap_sta_mcs_nss_map_standard,
          &EHT::set_20_mhz_only_non_ap_sta_mcs_nss_map_standard, 0x00011122);
    IEEE802_11_BeaconReport report(0);
    report.set_actual_measurement_start_time_standard(0x0102030405060708);
    report.set_measurement_duration_standard(0x0102);
    report.set_parent_TSF_standard(0x01020304);
    EXPECT_EQ(report.get_actual_measurement_start_time(), 0x0807060504030201U);
    EXPECT_EQ(report.get_measurement_duration(), 0x0201);
    EXPECT_EQ(report.get_parent_TSF(), 0x04030201U);
}

TEST(SupportedChannels, HoldUpTo127Pairs) {
    IEEE802_11_SupportedChannels element;
    element.add_supported_channel(36, 4);
    element.add_supported_channel(100, 11);
    EXPECT_EQ(as_written(element), "24 04 24 04 64 0b");
    while (element.get_channels_vector().size() < 128) {
        element.add_supported_channel(1, 1);
    }
    EXPECT_EQ(as_written(element), "Invalid size");
}

TEST(SupportedOperatingClasses, AreThreeListsWithDelimitersBetween) {
    const auto classes = read_as<Classes>("3b 0a 51 73 82 83 82 00 53 54 00 82");
    EXPECT_EQ(classes.get_current_opclass(), 81);
    EXPECT_EQ(classes.get_capable_opclasses(), Classes::Classes{115});
    EXPECT_EQ(classes.get_extension_vector(), (Classes::Classes{131, 130})) << "130 is data there";
    EXPECT_EQ(classes.get_duple_opclasses(), (Classes::Duples{0x5354, 0x0082}));
    EXPECT_EQ(as_written(read_as<Classes>("3b 03 51 53 82")), "3b 02 51 53")
        << "a delimiter without a list is not written again";
}

TEST(SupportedOperatingClasses, BodyHolds255Octets) {
    EXPECT_EQ(Classes(81, Bytes(254, 1)).get_length(), 257U);
    EXPECT_EQ(as_written(Classes(81, Bytes(255, 1))), "Invalid length");
}

TEST(NonInheritance, CountsOneOctetMoreThanItWrites) {
    NonInheritance element;
    element.set_ids({ID::RSN});
    EXPECT_EQ(as_written(element), "ff 05 38 01 30 00");
    EXPECT_EQ(element.get_length(), 7U);
    element = read_as("ff 05 38 00 02 23 6c", element);
    EXPECT_TRUE(element.get_ids().empty());
    EXPECT_EQ(element.get_extended_ids(),
              (NonInheritance::ExtendedIds{Ext::HE_CAPABILITIES, Ext::EHT_CAPABILITIES}));
}

TEST(RawElement, KeepsItsBodyAndBoundsIt) {
    EXPECT_EQ(read_as<IEEE802_11_PowerCapability>("21 02 00 14").get_body(),
              (IEEE802_11_Body{0x00, 0x14}));
    IEEE802_11_PowerCapability plain;
    plain.set_body(Bytes(256));
    EXPECT_EQ(as_written(plain), "Invalid length");
}

TEST(RawElement, FieldsAreAbsentWhereTheBodyEndsBeforeThem) {
    const auto half = read_as<Power>("21 01 f9");
    EXPECT_EQ(half.get_minimum_transmit_power(), -7);
    EXPECT_EQ(half.get_maximum_transmit_power(), std::nullopt);
    EXPECT_EQ(QoS().get_q_ack(), std::nullopt);
    EXPECT_EQ(Mode().get_rx_nss(), std::nullopt);
    EXPECT_EQ(TIM().get_broadcast_interval(), std::nullopt);
    EXPECT_EQ(Traffic().get_flags(), std::nullopt);
    EXPECT_TRUE(Traffic().get_station_counts().empty());
    const auto traffic = read_as<Traffic>("59 03 03 05 06");
    EXPECT_EQ(traffic.get_flags(), 3);
    EXPECT_EQ(traffic.get_station_counts()[1], 6);
    const auto sublayers = read_as<Sublayers>("aa 0f 07 02 00 00 00 00 01 02 00 00 00 00 02 02 00");
    EXPECT_EQ(sublayers.get_mms_control(), 7);
    EXPECT_EQ(sublayers.get_sta_address(), MACAddress("02:00:00:00:00:01"));
    EXPECT_EQ(sublayers.get_interface_address(0), MACAddress("02:00:00:00:00:02"));
    EXPECT_EQ(sublayers.get_interface_address(1), std::nullopt);
}

TEST(RawElement, SettersTouchTheirBitsAlone) {
    const auto set = [](auto element, auto setter, auto value) {
        (element.*setter)(value);
        return as_written(element);
    };
    EXPECT_EQ(set(Power(), &Power::set_maximum_transmit_power, std::int8_t{-1}), "21 02 00 ff");
    EXPECT_EQ(
        set(read_as<Power>("21 03 f9 14 07"), &Power::set_minimum_transmit_power, std::int8_t{2}),
        "21 03 02 14 07");
    EXPECT_EQ(set(TIM(), &TIM::set_broadcast_interval, std::uint8_t{10}), "5e 01 0a");

    QoS station;
    station.set_u_apsd(QoS::AccessCategory::BK, true);
    station.set_max_sp_length(QoS::MaxSPLength::FOUR);
    station.set_more_data_ack(true);
    EXPECT_EQ(as_written(station), "2e 01 c4");
    EXPECT_EQ(station.get_u_apsd(QoS::AccessCategory::BK), true);
    EXPECT_EQ(station.get_u_apsd(QoS::AccessCategory::VI), false);
    EXPECT_EQ(station.get_max_sp_length(), QoS::MaxSPLength::FOUR);
    EXPECT_EQ(station.get_more_data_ack(), true);
    station.set_qos_info(0xFF);
    station.set_q_ack(false);
    EXPECT_EQ(station.get_qos_info(), 0xEF);
    QoS access_point;
    access_point.set_edca_update_count(0x1A);
    access_point.set_queue_request(true);
    EXPECT_EQ(as_written(access_point), "2e 01 2a");
    EXPECT_EQ(access_point.get_edca_update_count(), 10);
    EXPECT_EQ(access_point.get_queue_request(), true);
    access_point.set_txop_request(true);
    EXPECT_EQ(access_point.get_qos_info(), 0x6A);
    EXPECT_EQ(access_point.get_txop_request(), true);

    Mode mode;
    mode.set_rx_nss(8);
    mode.set_channel_width(Mode::Width::WIDTH_80);
    mode.set_160_or_80_80_mhz(true);
    mode.set_no_ldpc(true);
    EXPECT_EQ(as_written(mode), "c7 01 7e");
    mode.set_rx_nss_type(Mode::NSSType::BEAMFORMED);
    mode.set_rx_nss(1);
    EXPECT_EQ(as_written(mode), "c7 01 8e");
    EXPECT_EQ(mode.get_rx_nss(), 1);
    EXPECT_EQ(mode.get_channel_width(), Mode::Width::WIDTH_80);
    EXPECT_EQ(mode.get_rx_nss_type(), Mode::NSSType::BEAMFORMED);
    EXPECT_TRUE(mode.get_160_or_80_80_mhz().value() && mode.get_no_ldpc().value());
}

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
            EXPECT_EQ(as_written(element), test::to_hex(octets));
            octets.push_back(0x55);
        }
        octets[1] = static_cast<std::uint8_t>(octets.size() - 2 - 4);
        serialization::SerializationContext ctx;
        EXPECT_EQ(test::message_of([&] { Mapping().deserialize(octets, ctx); }), "Invalid length");
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
    EXPECT_EQ(as_written(element), "ff 0b 6d 39 81 9a 78 56 34 12 01 06 aa");
    EXPECT_EQ(element.get_link_map(7), 6);
    EXPECT_EQ(element.get_link_map(1), std::nullopt);
    EXPECT_EQ(element.get_link_map(8), std::nullopt);
    EXPECT_THROW(element.set_link_map(8, 1), std::out_of_range);

    element.set_link_map(7, 0x100);
    EXPECT_EQ(as_written(element), "Invalid length") << "a map of two octets";
    element.set_link_map(7, std::nullopt);
    element.set_expected_duration(0x1000000);
    EXPECT_EQ(as_written(element), "Invalid length") << "a duration of four";
    element.set_expected_duration(std::nullopt);
    element.set_mapping_switch_time(std::nullopt);
    EXPECT_EQ(as_written(element), "ff 05 6d 21 01 01 aa");
    element.set_default_link_mapping(true);
    EXPECT_EQ(as_written(element), "ff 03 6d 25 aa");
    element.set_link_map(3, 0x40);
    EXPECT_EQ(as_written(element), "ff 05 6d 21 08 40 aa");
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

TEST(Element, ChecksItsIdentifiersOnlyWhereItsClassDoes) {
    serialization::SerializationContext ctx;
    const auto error = [&](IEEE802_11_Element_Base&& element, std::string_view hex) {
        return test::message_of([&] { element.deserialize(test::from_hex(hex), ctx); });
    };
    EXPECT_EQ(error(IEEE802_11_MultiLink(), "fe 01 6b"), "Invalid ID");
    EXPECT_EQ(error(IEEE802_11_MultiLink(), "ff 01 6c"), "Unexpected ID");
    EXPECT_EQ(error(Dummy(ID{10}), "0b 00"), "Invalid type");
    EXPECT_EQ(error(Rates(), "02 01 82"), "");
    EXPECT_EQ(error(NonInheritance(), "ff 03 39 00 00"), "");
}

TEST(DummyElement, KeepsTheSizeAndWritesZeros) {
    EXPECT_EQ(as_written(read_as("dd 04 00 50 f2 02", Dummy(ID::VENDOR_SPECIFIC))),
              "dd 04 00 00 00 00");
    Dummy extended(ID::ELEMENT_ID_EXTENSION);
    EXPECT_EQ(extended.get_extension_type(), Ext::NO_EXTENSION);
    extended = read_as("ff 02 3b 01", extended);
    EXPECT_EQ(extended.get_extension_type(), Ext::HE_6_GHZ_BAND_CAPABILITIES);
    EXPECT_EQ(as_written(extended), "ff 02 3b 00");
    constexpr const char* error = "Invalid length: must fit an OUI";
    EXPECT_EQ(as_written(Dummy(ID::VENDOR_SPECIFIC, 2)), error);
    EXPECT_EQ(as_written(Dummy(ID::VENDOR_SPECIFIC, 256)), error);
    EXPECT_EQ(as_written(Dummy(ID{10}, 256)), error);
    EXPECT_EQ(as_written(Dummy(ID::ELEMENT_ID_EXTENSION, 255)), error);
    EXPECT_NE(as_written(Dummy(ID::ELEMENT_ID_EXTENSION, 254)), error);
}

TEST(Element, TypedNeverEqualsRawWhateverTheOctets) {
    const IEEE802_11_MobilityDomain typed;
    const Dummy raw(ID::MOBILITY_DOMAIN, 3);
    EXPECT_FALSE(typed == raw);
    EXPECT_FALSE(raw == typed);
    EXPECT_TRUE(raw == Dummy(ID::MOBILITY_DOMAIN, 3)) << "raw ones by ID, extension and size";
    EXPECT_FALSE(raw == Dummy(ID::MOBILITY_DOMAIN, 4));
    EXPECT_FALSE(typed == IEEE802_11_PowerCapability());
}

TEST(Element, OfAForeignClassIsNotEqualWhateverItsIdentifier) {
    class Foreign : public IEEE802_11_RawElement<ID::POWER_CAPABILITY> {};
    const Foreign foreign;
    const IEEE802_11_PowerCapability own;
    EXPECT_FALSE(own == foreign);
    EXPECT_FALSE(foreign == own);
}

TEST(Element, LongerThanItsLengthCanSayIsRefused) {
    IEEE802_11_HECapabilities element;
    element.set_ppe_threshold_field_dummy(Bytes(233));
    EXPECT_EQ(test::from_hex(as_written(element)).size(), 257U);
    element.set_ppe_threshold_field_dummy(Bytes(234));
    EXPECT_EQ(as_written(element), "Invalid length");
}

TEST(Element, RunningPastTheEndLeavesTheFailBit) {
    // Length 9, three octets there: all fields are, the rest is not.
    const test::Octets octets = test::from_hex("36 09 12 34 02");
    serialization::SerializationContext ctx;
    IEEE802_11_MobilityDomain element;
    EXPECT_EQ(element.deserialize(octets, ctx), std::ios_base::failbit);
    std::stringstream is(test::to_string(octets));
    element.deserialize_impl(is, ctx);
    EXPECT_EQ(is.rdstate(), std::ios_base::failbit);
    is.clear();
    EXPECT_EQ(is.tellg(), 5) << "it stands behind what was read";
}

TEST(Element, NeedsAStreamWithAPosition) {
    class Pipe : public std::streambuf {
    public:
        Pipe() { setg(octets_, octets_, octets_ + sizeof octets_); }

    private:
        char octets_[5] = {54, 3, 0, 0, 0};
    } pipe;
    std::istream is(&pipe);
    serialization::SerializationContext ctx;
    EXPECT_THROW(IEEE802_11_MobilityDomain().deserialize_impl(is, ctx), std::logic_error);
}

}  // namespace
}  // namespace nuv::ieee802_11
