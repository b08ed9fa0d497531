// SPDX-License-Identifier: Apache-2.0
#include "nuv/mac_address.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <iomanip>
#include <iterator>

#include "nuv/binary_serializable_type.hpp"
#include "nuv_platform/fake.hpp"
#include "support/json_text.hpp"

using nuv::MACAddress;
using nuv::test::from_json;
using nuv::test::message_of;
using nuv::test::to_json;

namespace {
const std::string TEXT = "00:1A:2B:3C:4D:5E";
const MACAddress ADDRESS({0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});

/// A scan by the C library is the reference, also for what a refused text leaves behind.
void expect_as_scanned(const std::string& text) {
    MACAddress::Octets o{};
    int end = 0;
    const bool fits = text.size() == 17 &&
                      text.find_first_not_of("0123456789ABCDEFabcdef:") == std::string::npos &&
                      std::sscanf(text.c_str(), "%2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx%n", &o[0],
                                  &o[1], &o[2], &o[3], &o[4], &o[5], &end) == 6 &&
                      end == 17;
    MACAddress parsed;
    EXPECT_EQ(parsed.parse_string(text), fits) << text;
    EXPECT_EQ(parsed.octets(), o) << text;
}
}  // namespace

TEST(MACAddress, EveryTextOneCharacterOffIsReadAsAScanReadsIt) {
    for (std::size_t place = 0; place < TEXT.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            expect_as_scanned(std::string(TEXT).replace(place, 1, 1, static_cast<char>(byte)));
        }
        expect_as_scanned(std::string(TEXT).erase(place, 1));
        expect_as_scanned(std::string(TEXT).insert(place, 1, ':'));
        expect_as_scanned(std::string(TEXT).insert(place, 1, ':').substr(0, 17));
    }
    for (const char* text :
         {"001A2:B3C:4D:5E:F", "1:2:3:4:5:6::::::", "12345678901234567", "00:1a:2b:3c:4d:5e"}) {
        expect_as_scanned(text);
    }
    EXPECT_EQ(MACAddress("00:1a:2b:3c:4d:5e").to_string(), TEXT);
    EXPECT_EQ(message_of<std::invalid_argument>([] { return MACAddress("x").to_string(); }),
              "'x' is no valid MACAddress string");
}

TEST(MACAddress, OutputIgnoresAndKeepsTheFormat) {
    std::ostringstream os;
    os << std::left << std::oct << std::setfill('*') << std::setw(30);
    const auto flags = os.flags();
    os << ADDRESS;
    EXPECT_EQ(os.str(), TEXT);
    EXPECT_TRUE(os.width() == 30 && os.fill() == '*' && os.flags() == flags);
}

TEST(MACAddress, InputEndsWithExactlyTheFailBitOrNone) {
    struct {
        std::string text;
        bool accepted;
        std::string rest;
    } const rows[] = {
        {TEXT, true, ""},
        {" \n" + TEXT + " x", true, " x"},
        {TEXT + "77", true, "77"},
        {TEXT.substr(1), false, ""},  // the end of file is forgotten on purpose
        {"zz:zz:zz:zz:zz:zz x", false, " x"},
        {"", false, ""},
    };
    for (const auto& row : rows) {
        std::istringstream is(row.text);
        MACAddress address;
        is >> std::setw(3) >> address;
        EXPECT_EQ(is.rdstate(), row.accepted ? std::ios::goodbit : std::ios::failbit) << row.text;
        EXPECT_EQ(address, row.accepted ? ADDRESS : MACAddress()) << row.text;
        EXPECT_EQ(is.width(), 3);
        is.clear();
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(is), {}), row.rest) << row.text;
    }
}

TEST(MACAddress, IndexIsCheckedAndTypeBitsChangeAlone) {
    EXPECT_EQ(message_of<std::out_of_range>([&] { return std::to_string(ADDRESS[6]); }),
              "array::at: __n (which is 6) >= _Nm (which is 6)");
    for (unsigned octet = 0; octet < 256; ++octet) {
        MACAddress a;
        a[0] = static_cast<std::uint8_t>(octet);
        EXPECT_EQ(MACAddress(a).set_individual()[0], octet & 0xFEU);
        EXPECT_EQ(MACAddress(a).set_group()[0], octet | 0x01U);
        EXPECT_EQ(MACAddress(a).set_universally_administered()[0], octet & 0xFDU);
        EXPECT_EQ(MACAddress(a).set_locally_administered()[0], octet | 0x02U);
    }
}

TEST(MACAddress, OrdersAsUnsignedOctetsAndHashesWith32Bits) {
    EXPECT_LT(MACAddress("00:00:00:00:00:FF"), MACAddress("00:00:00:00:01:00"));
    EXPECT_LT(MACAddress("00:00:00:00:01:00"), MACAddress("80:00:00:00:00:00"));
    EXPECT_TRUE(ADDRESS <= ADDRESS && ADDRESS != MACAddress());
    EXPECT_EQ(std::hash<MACAddress>()(ADDRESS), 0x013759ABU);
    EXPECT_EQ(std::hash<MACAddress>()(MACAddress()), 0x7F77879DU);
    EXPECT_EQ(std::hash<MACAddress>()(MACAddress("FF:FF:FF:FF:FF:FF")), 0xC4F2886FU);
}

TEST(MACAddress, TwoAddressesAreInvalidAndGroupsAreNotIndividual) {
    struct {
        const char* text;
        bool valid;
        bool individual;
    } const rows[] = {
        {"00:00:00:00:00:00", false, false}, {"00:B0:52:00:00:01", false, false},
        {"00:B0:52:00:00:02", true, true},   {"01:00:5E:00:00:01", true, false},
        {"FF:FF:FF:FF:FF:FF", true, false},  {"02:00:00:00:00:00", true, true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(is_valid_mac_address(MACAddress(row.text)), row.valid) << row.text;
        EXPECT_EQ(is_valid_individual_mac_address(MACAddress(row.text)), row.individual);
    }
}

TEST(MACAddress, OfAnInterfaceIsWhatThePlatformKnows) {
    nuv::platform::FakePlatform platform;
    platform.set_hwaddr("name_of_15_char", ADDRESS.octets());
    EXPECT_EQ(get_mac_for_ifname(nuv::InterfaceName("name_of_15_char")), ADDRESS);
    EXPECT_EQ(get_mac_for_ifname(nuv::InterfaceName("eth9")), MACAddress());
}

TEST(MACAddress, JsonIsTheTextForm) {
    MACAddress address;
    EXPECT_EQ(to_json(ADDRESS), '"' + TEXT + '"');
    EXPECT_EQ(to_json(ADDRESS, 5), "Serialization of MACAddress failed");
    EXPECT_EQ(from_json("{\"m\":\"00:1a:2b:3c:4d:5e\"}", "m", address), "");
    EXPECT_EQ(from_json("{\"m\":5}", "m", address),
              "Deserialization of MACAddress \"m\" failed, got \"\"");
    EXPECT_THROW(from_json("{\"m\":\"x\"}", "m", address), std::invalid_argument);
    EXPECT_EQ(address, ADDRESS);
}

TEST(MACAddress, BinaryFormIsTheOctetsOfWhichAShortReadAppliesTheFirst) {
    using Codec = nuv::serialization::BinarySerializableType<MACAddress>;
    nuv::serialization::SerializationContext ctx;
    std::stringstream stream;
    MACAddress address;
    Codec::serialize(stream, ctx, ADDRESS);
    EXPECT_EQ(stream.str(), std::string("\0\x1A\x2B\x3C\x4D\x5E", 6));
    stream.str("\x11\x22");
    EXPECT_EQ(message_of([&] { return Codec::deserialize(stream, ctx, address), ""; }),
              "Deserialization of type std::uint8_t failed.");
    EXPECT_EQ(address.to_string(), "11:22:00:00:00:00");
}
