// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_beacon_report.hpp"

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/codec_checks.hpp"
#include "tests/support/codecs.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::written;
using Beacon = IEEE802_11_BeaconReport;
using Dummy = IEEE802_11_DummyElement;
using ID = IEEE802_11_Element_ID;

const std::string fixed =
    "51 06 01 02 03 04 05 06 07 08 09 0a 07 8c 30 00 11 22 33 44 55 03 0b 0c 0d 0e";

TEST(BeaconReport, TimesAreMostSignificantOctetFirst) {
    const Beacon report = test::read_as<Beacon>(fixed, Beacon(26));
    EXPECT_EQ(report.get_actual_measurement_start_time(), 0x0102030405060708U);
    EXPECT_EQ(report.get_measurement_duration(), 0x090A);
    EXPECT_EQ(report.get_parent_TSF(), 0x0B0C0D0EU);
    EXPECT_EQ(report.get_actual_measurement_start_time_standard(), 0x0807060504030201U);
    EXPECT_EQ(report.get_measurement_duration_standard(), 0x0A09);
    EXPECT_EQ(report.get_parent_TSF_standard(), 0x0E0D0C0BU);

    const Beacon built(81, 6, 0x0102030405060708, 0x090A, 7, 0x8C, 0x30,
                       MACAddress("00:11:22:33:44:55"), 3, 0x0B0C0D0E);
    EXPECT_EQ(report, built) << "the limit is no part of the value";
    EXPECT_EQ(written(built), fixed);

    Beacon set(0);
    set.set_operating_class(81);
    set.set_channel_number(6);
    set.set_actual_measurement_start_time(0x0102030405060708);
    set.set_measurement_duration(0x090A);
    set.set_reported_frame_informaiton(7);
    set.set_RCPI(0x8C);
    set.set_RSNI(0x30);
    set.set_BSSID(MACAddress("00:11:22:33:44:55"));
    set.set_antenna_ID(3);
    EXPECT_NE(set, built);
    set.set_parent_TSF(0x0B0C0D0E);
    EXPECT_EQ(set, built);
    set.set_actual_measurement_start_time_standard(1);
    set.set_measurement_duration_standard(0x0102);
    set.set_parent_TSF_standard(0x01020304);
    EXPECT_EQ(set.get_actual_measurement_start_time(), 0x0100000000000000U);
    EXPECT_EQ(set.get_measurement_duration(), 0x0201);
    EXPECT_EQ(set.get_parent_TSF(), 0x04030201U);
}

TEST(BeaconReport, SubelementsKeepTheirSizeAndAreWrittenInOrderAsZeros) {
    Beacon report(0);
    report.set_vendor_specific({Dummy(ID{221}, 3), Dummy(ID{221}, 4)});
    report.set_bandwidth_channel_switch(Dummy(ID{163}, 1));
    report.set_reported_frame_body(Dummy(ID{1}, 2));
    EXPECT_EQ(written(report).substr(fixed.size() + 1),
              "01 02 00 00 a3 01 00 dd 03 00 00 00 dd 04 00 00 00 00");
    EXPECT_EQ(report.get_length(), 44U);
    EXPECT_EQ(report.get_reported_frame_body(), Dummy(ID{1}, 2));
    EXPECT_EQ(report.get_wide_bandwidth_channel_switch(), Dummy(ID{163}, 1));
    EXPECT_EQ(report.get_vendor_specific().at(1), Dummy(ID{221}, 4));
    EXPECT_THROW(report.set_vendor_specific(Beacon::VendorElements(11, Dummy(ID{221}, 5))),
                 std::invalid_argument);
    EXPECT_EQ(report.get_vendor_specific().size(), 2U);
    report.set_vendor_specific(Beacon::VendorElements(10, Dummy(ID{221}, 2)));
    EXPECT_EQ(written(report), "Invalid length: must fit an OUI");
    const Beacon empty(0);
    EXPECT_NE(report, empty);
    report.set_reported_frame_body({});
    report.set_bandwidth_channel_switch({});
    report.set_vendor_specific({});
    EXPECT_EQ(report, empty);
    EXPECT_EQ(report.get_reported_frame_body(), std::nullopt);
}

TEST(BeaconReport, ReadsUpToItsLimit) {
    for (const test::Sample& sample : test::vectors("beacon_reports")) {
        SCOPED_TRACE(sample.name);
        const std::span octets = std::span(sample.octets).subspan(1);
        const auto reading =
            test::read_from_memory(std::make_unique<Beacon>(sample.octets[0]), octets);
        EXPECT_EQ(reading.error, sample.error);
        if (reading.ok()) {
            const std::size_t read = octets.size() - sample.surplus;
            EXPECT_EQ(reading.object->get_length(), read);
            EXPECT_EQ(reading.position, static_cast<std::streamoff>(read));
        }
    }
}

TEST(BeaconReport, LogsTheEleventhVendorElement) {
    platform::FakePlatform fake;
    std::string hex = fixed;
    for (int n = 0; n < 11; ++n) {
        hex += " dd 03 00 50 f2";
    }
    Beacon report(255);
    EXPECT_EQ(test::read_octets(hex, report), "Number of vendor elements exceeds secure limit!");
    ASSERT_EQ(fake.log().texts(),
              std::vector<std::string>{
                  "Number of Vendor Elements exceeds limit of 10. Failing deserialize!"});
    const auto record = fake.log().records().front();
    EXPECT_EQ(record.module, "becon_report");
    EXPECT_EQ(record.level, 0);
    EXPECT_EQ(record.file, "src/shared/ieee802_11/ieee802_11_beacon_report");
}

}  // namespace
}  // namespace nuv::ieee802_11
