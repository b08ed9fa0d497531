// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_measurement_report.hpp"

#include "nuv/ieee802_11/ieee802_11_beacon_report.hpp"
#include "tests/support/codecs.hpp"

namespace nuv::ieee802_11 {
namespace {

using Report = IEEE802_11_MeasurementReport;
using Beacon = IEEE802_11_BeaconReport;
using Dummy = IEEE802_11_DummyElement;
using ID = IEEE802_11_Element_ID;

static_assert(!std::is_copy_constructible_v<Report> && std::is_move_constructible_v<Report>);

std::string refusal(auto function) { return test::message_of<std::invalid_argument>(function); }

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
        const auto octets = test::from_hex(test::written(report));
        EXPECT_EQ(octets.size(), 33 + body);
        EXPECT_EQ(report.get_length(), octets.size() % 256);
        EXPECT_EQ(octets[1], (octets.size() - 2) % 256);
    }
    beacon->set_reported_frame_body(Dummy(ID{1}, 256));
    EXPECT_EQ(test::written(report), "Invalid length: must fit an OUI");
}

}  // namespace
}  // namespace nuv::ieee802_11
