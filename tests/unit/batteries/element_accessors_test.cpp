// SPDX-License-Identifier: Apache-2.0
// Getters and setters of the elements against their octets; what holds for every element is in the
// element battery.

#include "nuv/ieee802_11.hpp"
#include "tests/support/codecs.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::Octets;
using test::read_as;
using test::written;

using Rates = IEEE802_11_SupportedRatesBSSMembershipSelector;
using ExtendedRates = IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector;
using Classes = IEEE802_11_SupportedOperatingClasses;
using Channels = IEEE802_11_SupportedChannels;
using NonInheritance = IEEE802_11_Non_Inheritance;
using Power = IEEE802_11_PowerCapability;
using QoS = IEEE802_11_QOSCapability;
using Traffic = IEEE802_11_QoSTrafficCapabilities;
using TIM = IEEE802_11_TIMBroadcastRequest;
using Mode = IEEE802_11_OperatingModeNotification;
using Sublayers = IEEE802_11_MultipleMACSublayers;
using Domain = IEEE802_11_MobilityDomain;
using Dummy = IEEE802_11_DummyElement;
using HE = IEEE802_11_HECapabilities;
using EHT = IEEE802_11_EHTCapabilities;
using Operation = IEEE802_11_EHTOperation;
using Extended = IEEE802_11_ExtendendCapabilities;
using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;

/// What is written of an E after `change`.
template <class E>
std::string made(auto change, E element = {}) {
    change(element);
    return written(element);
}

/// Octets `first`, `first` + 1 and so on, so that each stands for itself.
std::string count_from(std::uint8_t first, std::size_t n) {
    Octets octets(n);
    std::iota(octets.begin(), octets.end(), first);
    return test::to_hex(octets) + (n > 0 ? " " : "");
}

TEST(ElementAccessors, ListsAreBoundedWhenTheyAreWritten) {
    EXPECT_EQ(read_as<Rates>("01 02 82 84").get_supported_rates(), (Rates::Rates{0x82, 0x84}));
    EXPECT_EQ(made<Rates>([](auto& e) { e.set_supported_rates(Octets(9)); }), "Invalid size");
    EXPECT_EQ(written(ExtendedRates()), "Invalid size");
    EXPECT_EQ(made<ExtendedRates>([](auto& e) { e.set_extended_supported_rates(Octets(256)); }),
              "Invalid size");
    Channels channels;
    channels.add_supported_channel(36, 4);
    channels.add_supported_channel(100, 11);
    EXPECT_EQ(written(channels), "24 04 24 04 64 0b");
    while (channels.get_channels_vector().size() < 128) {
        channels.add_supported_channel(1, 1);
    }
    EXPECT_EQ(written(channels), "Invalid size");
    EXPECT_EQ(Classes(81, Octets(254, 1)).get_length(), 257U);
    EXPECT_EQ(written(Classes(81, Octets(255, 1))), "Invalid length");
    EXPECT_EQ(made<Power>([](auto& e) { e.set_body(Octets(256)); }), "Invalid length");
    const auto he = [](std::size_t size) {
        return made<HE>([&](auto& e) { e.set_ppe_threshold_field_dummy(Octets(size)); });
    };
    EXPECT_EQ(test::from_hex(he(233)).size(), 257U);
    EXPECT_EQ(he(234), "Invalid length");
}

TEST(ElementAccessors, OperatingClassesAreThreeListsWithDelimitersBetween) {
    const auto classes = read_as<Classes>("3b 0a 51 73 82 83 82 00 53 54 00 82");
    EXPECT_EQ(classes.get_current_opclass(), 81);
    EXPECT_EQ(classes.get_capable_opclasses(), Classes::Classes{115});
    EXPECT_EQ(classes.get_extension_vector(), (Classes::Classes{131, 130})) << "130 is data there";
    EXPECT_EQ(classes.get_duple_opclasses(), (Classes::Duples{0x5354, 0x0082}));
    EXPECT_EQ(written(read_as<Classes>("3b 03 51 53 82")), "3b 02 51 53")
        << "a delimiter without a list is not written again";
}

TEST(ElementAccessors, StandardValuesAreTheLibrarysWithTheirOctetsInReverse) {
    const auto check = [](auto object, const std::string& hex, auto get, auto set, unsigned value) {
        object = read_as(hex, std::move(object));
        EXPECT_EQ((object.*get)(), value) << hex;
        (object.*set)(0);
        (object.*set)(static_cast<decltype((object.*get)())>(value));
        EXPECT_EQ(written(object), hex);
    };
    check(Domain(), "36 03 12 34 02", &Domain::get_mdid, &Domain::set_mdid, 0x1234);
    check(Domain(), "36 03 34 12 02", &Domain::get_mdid_standard, &Domain::set_mdid_standard,
          0x1234);
    using Frame = AssocRequestFrame;
    check(Frame(), "00 00 0a 01 00 00", &Frame::get_listen_interval_standard,
          &Frame::set_listen_interval_standard, 0x010A);
    const std::string operation = "ff 08 6a 02 44 33 22 11 0c 30";
    check(Operation(), operation, &Operation::get_basic_mcs_nss_set_standard,
          &Operation::set_basic_mcs_nss_set_standard, 0x11223344);
    check(Operation(), operation, &Operation::get_disabled_subchannel_bitmap_standard,
          &Operation::set_disabled_subchannel_bitmap_standard, 0x300C);
    check(EHT(true, false, false), "ff 10 6c 00 00 00 00 00 00 00 00 00 00 00 22 11 01 00",
          &EHT::get_20_mhz_only_non_ap_sta_mcs_nss_map_standard,
          &EHT::set_20_mhz_only_non_ap_sta_mcs_nss_map_standard, 0x00011122);
}

TEST(ElementAccessors, NonInheritanceCountsOneOctetMoreThanItWrites) {
    NonInheritance element;
    element.set_ids({ID::RSN});
    EXPECT_EQ(written(element), "ff 05 38 01 30 00");
    EXPECT_EQ(element.get_length(), 7U);
    element = read_as("ff 05 38 00 02 23 6c", element);
    EXPECT_TRUE(element.get_ids().empty());
    EXPECT_EQ(element.get_extended_ids(),
              (NonInheritance::ExtendedIds{Ext::HE_CAPABILITIES, Ext::EHT_CAPABILITIES}));
    EXPECT_EQ(
        written(read_as("ff ff 38 7e " + count_from(0, 126) + "7e " + count_from(0, 126), element)),
        "Invalid length");
}

TEST(ElementAccessors, FieldsAreAbsentWhereTheBodyEndsBeforeThem) {
    EXPECT_EQ(read_as<Power>("21 02 00 14").get_body(), (IEEE802_11_Body{0x00, 0x14}));
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

TEST(ElementAccessors, SettersTouchTheirBitsAlone) {
    EXPECT_EQ(made<Power>([](auto& e) { e.set_maximum_transmit_power(-1); }), "21 02 00 ff");
    EXPECT_EQ(made<Power>([](auto& e) { e.set_minimum_transmit_power(2); },
                          read_as<Power>("21 03 f9 14 07")),
              "21 03 02 14 07");
    EXPECT_EQ(made<TIM>([](auto& e) { e.set_broadcast_interval(10); }), "5e 01 0a");

    // Each setter on all zeros and, with its zero, on all ones; what the getter says of both.
    const auto check = [](auto element, auto set, auto get, auto value, int bits) {
        element.set_body({0});
        (element.*set)(value);
        EXPECT_EQ(element.get_body()[0], bits);
        EXPECT_EQ((element.*get)(), value);
        element.set_body({0xFF});
        (element.*set)({});
        EXPECT_EQ(element.get_body()[0], 0xFF & ~bits);
        EXPECT_EQ((element.*get)(), decltype(value){});
    };
    check(QoS(), &QoS::set_q_ack, &QoS::get_q_ack, true, 0x10);
    check(QoS(), &QoS::set_more_data_ack, &QoS::get_more_data_ack, true, 0x80);
    check(QoS(), &QoS::set_queue_request, &QoS::get_queue_request, true, 0x20);
    check(QoS(), &QoS::set_txop_request, &QoS::get_txop_request, true, 0x40);
    check(QoS(), &QoS::set_max_sp_length, &QoS::get_max_sp_length, QoS::MaxSPLength::SIX, 0x60);
    check(QoS(), &QoS::set_edca_update_count, &QoS::get_edca_update_count, std::uint8_t{15}, 0x0F);
    check(Mode(), &Mode::set_channel_width, &Mode::get_channel_width, Mode::Width::WIDTH_160, 0x03);
    check(Mode(), &Mode::set_160_or_80_80_mhz, &Mode::get_160_or_80_80_mhz, true, 0x04);
    check(Mode(), &Mode::set_no_ldpc, &Mode::get_no_ldpc, true, 0x08);
    check(Mode(), &Mode::set_rx_nss_type, &Mode::get_rx_nss_type, Mode::NSSType::BEAMFORMED, 0x80);
    EXPECT_EQ(made<Mode>([](auto& e) { e.set_rx_nss(8); }), "c7 01 70");
    EXPECT_EQ(made<Mode>([](auto& e) { e.set_rx_nss(1); }, read_as<Mode>("c7 01 ff")), "c7 01 8f");
    EXPECT_EQ(read_as<Mode>("c7 01 30").get_rx_nss(), 4);
    EXPECT_EQ(made<QoS>([](auto& e) { e.set_edca_update_count(0x1A); }), "2e 01 0a")
        << "higher bits are lost";
    QoS qos;
    qos.set_u_apsd(QoS::AccessCategory::BK, true);
    EXPECT_EQ(written(qos), "2e 01 04");
    EXPECT_EQ(qos.get_u_apsd(QoS::AccessCategory::BK), true);
    EXPECT_EQ(qos.get_u_apsd(QoS::AccessCategory::VI), false);
}

TEST(ElementAccessors, CapabilitiesStandInWireOrder) {
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
    // PHY bits 3 and 4 bring the maps of 160 and 80+80 MHz.
    const auto he = read_as<HE>("ff 1e 23 " + count_from(1, 6) + "18 " + count_from(0x21, 10) +
                                count_from(0x41, 12));
    EXPECT_EQ(he.get_rx_mcs_leq_80_mhz(), 0x4241);
    EXPECT_EQ(he.get_tx_mcs_160_mhz(), 0x4847);
    EXPECT_EQ(he.get_rx_mcs_80_80_mhz(), 0x4A49);
    const auto rm = read_as<IEEE802_11_RMEnabledCapabilities>("46 05 73 d0 00 00 0c");
    EXPECT_EQ(rm.get_capabilities(), std::bitset<40>(0x0C0000D073));
}

TEST(ElementAccessors, EHTMapsAreNumbersOfTheirOwnOrder) {
    const auto read = read_as("ff 10 6c " + count_from(2, 15), EHT(true, false, false));
    EXPECT_EQ(read.get_20_mhz_only_non_ap_sta_mcs_nss_map(), 0x0D0E0F10U)
        << "most significant octet first";
    EXPECT_TRUE(read.get_ppe_threshold_field_dummy().empty());
    EXPECT_EQ(EHT(true, true, true), EHT()) << "which maps there are does not count";
    EHT element;
    element.set_20_mhz_only_non_ap_sta_mcs_nss_map(0x10);
    EXPECT_EQ(element.get_length(), 14U) << "the low four bits make it present";
    element.set_20_mhz_only_non_ap_sta_mcs_nss_map(0x01);
    EXPECT_EQ(element.get_length(), 18U);
    const EHT::EHT_MCS_NSS_MAP map(0xFF654321);
    EXPECT_EQ(std::bitset<24>(map), 0x654321);
    EXPECT_EQ(map.get_rx_max_nss(0), 1) << "six nibbles, lowest first";
    EXPECT_EQ(map.get_tx_max_nss(2), 6);
    EXPECT_NE(map, EHT::EHT_MCS_NSS_MAP(0x654322));
    EXPECT_EQ(made<EHT>([&](auto& e) { e.set_less_or_equal_80_mhz_mcs_nss_map(map); },
                        EHT(false, true, false)),
              "ff 0f 6c 00 00 00 00 00 00 00 00 00 00 00 21 43 65");
}

TEST(ElementAccessors, EHTOperationHonoursTheBitmapWithoutTheInformation) {
    const auto read = read_as<Operation>("ff 08 6a 02 11 22 33 44 aa bb");
    EXPECT_EQ(read.get_length(), 10U);
    EXPECT_EQ(read.get_basic_mcs_nss_set(), 0x11223344U) << "most significant octet first";
    EXPECT_EQ(read.get_disabled_subchannel_bitmap(), 0xAABB);
    using Width = IEEE802_11_EHTOperationChannelWidthValue;
    EXPECT_EQ(written(Operation(0, 0x11223344, Width::WIDTH_320, 2, 3, 0xAABB)),
              "ff 0b 6a 03 11 22 33 44 04 02 03 aa bb");
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

TEST(ElementAccessors, TrailingZerosOfExtendedCapabilitiesAreNotSent) {
    for (std::size_t bit = 0; bit < 80; ++bit) {
        Extended element;
        element.set_capabilities(Extended::Capabilities(1) << bit);
        EXPECT_EQ(element.bytes_to_send(), bit / 8 + 1);
        EXPECT_EQ(test::from_hex(written(element)).size(), 2 + bit / 8 + 1);
    }
    const auto with_extra_octets = [](const Octets& octets) {
        return made<Extended>([&](auto& e) { e.set_extra_bytes(octets); });
    };
    EXPECT_EQ(written(Extended()), "7f 00");
    EXPECT_EQ(with_extra_octets({7}), "7f 0b 00 00 00 00 00 00 00 00 00 00 07");
    EXPECT_EQ(with_extra_octets(Octets(246)), "Invalid length");
    Extended longest;
    longest.set_extra_bytes(Octets(246));
    EXPECT_EQ(longest.get_length(), 2U) << "counted in 8 bits";
}

TEST(Element, ChecksItsIdentifiersOnlyWhereItsClassDoes) {
    const auto error = [&](auto element, std::string_view hex) {
        return test::read_octets(hex, element);
    };
    EXPECT_EQ(error(IEEE802_11_MultiLink(), "fe 01 6b"), "Invalid ID");
    EXPECT_EQ(error(IEEE802_11_MultiLink(), "ff 01 6c"), "Unexpected ID");
    EXPECT_EQ(error(IEEE802_11_MeasurementReport(), "28"), "Invalid ID");
    EXPECT_EQ(error(IEEE802_11_NeighborReport(), "35"), "Invalid ID");
    EXPECT_EQ(error(Dummy(ID{10}), "0b 00"), "Invalid type");
    EXPECT_EQ(error(Rates(), "02 01 82"), "");
    EXPECT_EQ(error(NonInheritance(), "ff 03 39 00 00"), "");
}

TEST(DummyElement, IsBounded) {
    EXPECT_EQ(Dummy(ID::ELEMENT_ID_EXTENSION).get_extension_type(), Ext::NO_EXTENSION);
    constexpr const char* error = "Invalid length: must fit an OUI";
    EXPECT_EQ(written(Dummy(ID::VENDOR_SPECIFIC, 2)), error);
    EXPECT_EQ(written(Dummy(ID::VENDOR_SPECIFIC, 256)), error);
    EXPECT_EQ(written(Dummy(ID{10}, 256)), error);
    EXPECT_EQ(written(Dummy(ID::ELEMENT_ID_EXTENSION, 255)), error);
    EXPECT_NE(written(Dummy(ID::ELEMENT_ID_EXTENSION, 254)), error);
}

TEST(Element, EqualsOnlyItsOwnClassWhateverTheOctets) {
    const Domain typed;
    const Dummy raw(ID::MOBILITY_DOMAIN, 3);
    EXPECT_FALSE(typed == raw || raw == typed);
    EXPECT_TRUE(raw == Dummy(ID::MOBILITY_DOMAIN, 3)) << "raw ones by ID, extension and size";
    EXPECT_FALSE(raw == Dummy(ID::MOBILITY_DOMAIN, 4));
    EXPECT_FALSE(typed == Power());
    class Foreign : public IEEE802_11_RawElement<ID::POWER_CAPABILITY> {};
    const Foreign foreign;
    EXPECT_FALSE(Power() == foreign || foreign == Power());
}

TEST(Element, NeedsAStreamWithAPosition) {
    struct Pipe : std::streambuf {
        Pipe() { setg(octets, octets, octets + sizeof octets); }
        char octets[5] = {54, 3, 0, 0, 0};
    } pipe;
    std::istream is(&pipe);
    serialization::SerializationContext ctx;
    EXPECT_THROW(Domain().deserialize_impl(is, ctx), std::logic_error);
}

}  // namespace
}  // namespace nuv::ieee802_11
