// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_measurement_report.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "nuv/ieee802_11/ieee802_11_beacon_report.hpp"
#include "support/elements.hpp"

namespace nuv::ieee802_11 {
namespace {

using Report = IEEE802_11_MeasurementReport;
using Beacon = IEEE802_11_BeaconReport;
using Dummy = IEEE802_11_DummyElement;
using ID = IEEE802_11_Element_ID;

static_assert(!std::is_copy_constructible_v<Report> && std::is_move_constructible_v<Report>);

/// The message of the std::invalid_argument that `function` throws.
template <class Function>
std::string refusal(Function function) {
    try {
        function();
    } catch (const std::invalid_argument& e) {
        return e.what();
    }
    return {};
}

TEST(MeasurementReport, RefusesFieldsOfAnotherType) {
    const auto beacon = std::make_shared<Beacon>(std::uint8_t{0});
    EXPECT_EQ(refusal([&] { Report(1, 0, MeasurementType::FRAME, beacon); }),
              "Construct measurement report with type mismatch");
    Report report(1, 0, MeasurementType::FRAME, nullptr);
    EXPECT_EQ(refusal([&] { report.set_measurement_report_field(beacon); }),
              "Mismatch between measurement type in argument and field value in *this");
    EXPECT_EQ(report.get_measurement_report_field(), nullptr);
    report.set_measurement_type(MeasurementType::BEACON);
    report.set_measurement_report_field(beacon);
    EXPECT_EQ(report, Report(1, 0, MeasurementType::BEACON, beacon));
    report.set_measurement_report_field(nullptr);
    EXPECT_NE(report, Report(1, 0, MeasurementType::BEACON, beacon));
}

TEST(MeasurementReport, ModesHaveOneBitAtMostAndTypesANumberOfTheStandard) {
    Report report;
    for (unsigned octet = 0; octet < 256; ++octet) {
        const bool one_bit = (octet & (octet - 1)) == 0;
        EXPECT_EQ(refusal([&] { report.set_measurement_report_mode(octet); }),
                  one_bit ? "" : "More than one Measurement Report Mode Bit set in argument");
        const auto type = static_cast<MeasurementType>(octet);
        EXPECT_EQ(refusal([&] { report.set_measurement_type(type); }),
                  octet <= 16 || octet == 255 ? "" : "Invalid Measurement Type value");
    }
    EXPECT_EQ(report.get_measurement_report_mode(), 0x80);
    EXPECT_EQ(report.get_measurement_type(), MeasurementType::MEASUREMENT_PAUSE);
}

TEST(MeasurementReport, CreatesAFieldForBeaconReportsOnly) {
    Report report;
    for (unsigned type = 0; type < 256; ++type) {
        EXPECT_EQ(report.create_measurement_report_field(static_cast<MeasurementType>(type), 29),
                  type == 5);
    }
    EXPECT_EQ(report.get_measurement_report_field()->get_max_consume_length(), 29);
}

TEST(MeasurementReport, LengthIsKeptInEightBits) {
    auto beacon = std::make_shared<Beacon>(std::uint8_t{0});
    const Report report(1, 0, MeasurementType::BEACON, beacon);
    for (const unsigned body : {222U, 223U, 224U, 225U, 226U, 255U}) {
        beacon->set_reported_frame_body(Dummy(ID{1}, static_cast<std::uint16_t>(body)));
        const auto octets = test::write(report).octets;
        EXPECT_EQ(octets.size(), 33 + body);
        EXPECT_EQ(report.get_length(), octets.size() % 256);
        EXPECT_EQ(octets[1], (octets.size() - 2) % 256);
    }
}

TEST(MeasurementReport, ChecksItsIdentifierBeforeItsLength) {
    serialization::SerializationContext ctx;
    Report report;
    EXPECT_EQ(test::message_of([&] { report.deserialize(test::from_hex("28"), ctx); }),
              "Invalid ID");
}

TEST(MeasurementReport, TextNamesItsParts) {
    const auto text = [](const Report& report) { return (std::ostringstream() << report).str(); };
    Report report(7, 4, MeasurementType::BEACON, nullptr);
    const std::string head =
        " (length incl. ID and length field)\n7 (token)\n00000100 (mode)\nBEACON (type field)\n";
    EXPECT_EQ(text(report), "39 (id)\n5" + head + "empty");

    auto beacon = std::make_shared<Beacon>(81, 6, 1000, 100, 7, 140, 48,
                                           MACAddress("00:11:22:33:44:55"), 1, 5000);
    const std::string fields =
        "0 (max-consume-length)\n81 (operating class)\n6 (channel number)\n"
        "1000 (measurement start time)\n100 (measurement_duration)\n"
        "00000111 (reported frame information)\n140 (RCPI)\n48 (RSNI)\n"
        "00:11:22:33:44:55 (BSSID)\n1 (antenna ID)\n5000 (parent TSF)\n";
    report.set_measurement_report_field(beacon);
    EXPECT_EQ(text(report), "39 (id)\n31" + head + "BEACON (type actual)\n26 (byte length)\n" +
                                fields + "0 (vendor elements)\n (report)");
    beacon->set_reported_frame_body(Dummy(ID{1}, 2));
    beacon->set_bandwidth_channel_switch(Dummy(ID{163}, 3));
    beacon->set_vendor_specific({Dummy(ID{221}, 4)});
    EXPECT_EQ(text(report),
              "39 (id)\n46" + head + "BEACON (type actual)\n41 (byte length)\n" + fields +
                  "included (reported frame body)\nincluded (wide bandwith channel switch)\n"
                  "1 (vendor elements)\n (report)");
}

}  // namespace
}  // namespace nuv::ieee802_11
