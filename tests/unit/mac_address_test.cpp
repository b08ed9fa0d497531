// SPDX-License-Identifier: Apache-2.0
#include "nuv/mac_address.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <iomanip>
#include <sstream>

#include "nuv_platform/fake.hpp"
#include "support/json_text.hpp"

using nuv::MACAddress;
using nuv::test::message_of;

namespace {
const MACAddress ADDRESS({0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
const std::string TEXT = "00:1A:2B:3C:4D:5E";

/// What a scan with the C library makes of `text`: the octets, and whether all of it fits.
std::pair<MACAddress::Octets, bool> scanned(const std::string& text) {
    MACAddress::Octets o{};
    int end = 0;
    if (text.size() != 17 ||
        text.find_first_not_of("0123456789ABCDEFabcdef:") != std::string::npos) {
        return {o, false};
    }
    const int count = std::sscanf(text.c_str(), "%2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx%n", &o[0],
                                  &o[1], &o[2], &o[3], &o[4], &o[5], &end);
    return {o, count == 6 && end == 17};
}

void expect_as_scanned(const std::string& text) {
    MACAddress parsed;
    const auto [octets, fits] = scanned(text);
    EXPECT_EQ(parsed.parse_string(text), fits) << text;
    EXPECT_EQ(parsed.octets(), octets) << text;  // also what a refused text leaves behind
}
}  // namespace

TEST(MACAddress, EveryTextOneCharacterOffIsReadAsAScanReadsIt) {
    for (std::size_t place = 0; place < TEXT.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text = TEXT;
            text[place] = static_cast<char>(byte);
            expect_as_scanned(text);
        }
        expect_as_scanned(TEXT.substr(0, place) + TEXT.substr(place + 1));
        expect_as_scanned(TEXT.substr(0, place) + ':' + TEXT.substr(place));
        expect_as_scanned(TEXT.substr(0, place) + ':' + TEXT.substr(place, 16 - place));
    }
    for (const char* text : {"001A2:B3C:4D:5E:F", "1:2:3:4:5:6::::::", ":::::::::::::::::",
                             "00-1A-2B-3C-4D-5E", "12345678901234567", "12:34:56:78:9a:bc:"}) {
        expect_as_scanned(text);
    }
}

TEST(MACAddress, TextFormIsUpperCase) {
    EXPECT_EQ(MACAddress("00:1a:2b:3c:4d:5e").to_string(), TEXT);
    EXPECT_EQ(MACAddress(TEXT), ADDRESS);
    EXPECT_EQ(message_of<std::invalid_argument>([] { MACAddress("xx"); }),
              "'xx' is no valid MACAddress string");
}

TEST(MACAddress, OutputIgnoresAndKeepsTheFormat) {
    std::ostringstream os;
    os << std::left << std::oct << std::setfill('*') << std::setw(30);
    const auto flags = os.flags();
    os << ADDRESS;
    EXPECT_EQ(os.str(), TEXT);
    EXPECT_EQ(os.width(), 30);
    EXPECT_EQ(os.fill(), '*');
    EXPECT_EQ(os.flags(), flags);
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
        {TEXT.substr(0, 16), false, ""},  // the end of file is forgotten on purpose
        {"zz:zz:zz:zz:zz:zz x", false, " x"},
        {"", false, ""},
    };
    for (const auto& row : rows) {
        std::istringstream is(row.text);
        is >> std::hex >> std::setw(3);
        const auto flags = is.flags();
        MACAddress address;
        is >> address;
        EXPECT_EQ(is.rdstate(), row.accepted ? std::ios::goodbit : std::ios::failbit) << row.text;
        EXPECT_EQ(address, row.accepted ? ADDRESS : MACAddress()) << row.text;
        EXPECT_EQ(is.width(), 3);
        EXPECT_EQ(is.flags(), flags);
        is.clear();
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(is), {}), row.rest) << row.text;
    }
}

TEST(MACAddress, IndexIsChecked) {
    MACAddress address = ADDRESS;
    address[5] = 0x77;
    EXPECT_EQ(address.to_string(), "00:1A:2B:3C:4D:77");
    EXPECT_EQ(message_of<std::out_of_range>([&] { address[6] = 0; }),
              "array::at: __n (which is 6) >= _Nm (which is 6)");
}

TEST(MACAddress, TypeBitsChangeAlone) {
    for (unsigned octet = 0; octet < 256; ++octet) {
        const auto with = [octet](MACAddress& (MACAddress::*set)() noexcept) {
            MACAddress address;
            address[0] = static_cast<std::uint8_t>(octet);
            return (address.*set)()[0];
        };
        EXPECT_EQ(with(&MACAddress::set_individual), octet & 0xFEU);
        EXPECT_EQ(with(&MACAddress::set_group), octet | 0x01U);
        EXPECT_EQ(with(&MACAddress::set_universally_administered), octet & 0xFDU);
        EXPECT_EQ(with(&MACAddress::set_locally_administered), octet | 0x02U);
    }
}

TEST(MACAddress, OrdersAsUnsignedOctets) {
    const MACAddress ascending[] = {
        MACAddress("00:00:00:00:00:FF"), MACAddress("00:00:00:00:01:00"),
        MACAddress("00:01:00:00:00:00"), MACAddress("80:00:00:00:00:00")};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            EXPECT_EQ(ascending[i] <=> ascending[j], i <=> j);
            EXPECT_EQ(ascending[i] == ascending[j], i == j);
        }
    }
}

TEST(MACAddress, HashesWith32Bits) {
    const std::hash<MACAddress> hash;
    EXPECT_EQ(hash(ADDRESS), 0x013759ABU);
    EXPECT_EQ(hash(MACAddress()), 0x7F77879DU);
    EXPECT_EQ(hash(MACAddress("FF:FF:FF:FF:FF:FF")), 0xC4F2886FU);
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
    platform.set_hwaddr("name_of_15_char", {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
    EXPECT_EQ(get_mac_for_ifname(nuv::InterfaceName("name_of_15_char")), ADDRESS);
    EXPECT_EQ(get_mac_for_ifname(nuv::InterfaceName("eth9")), MACAddress());
}

TEST(MACAddress, JsonIsTheTextForm) {
    MACAddress address;
    EXPECT_EQ(nuv::test::json_of([](auto& stream) { nuv::test::write_json(stream, ADDRESS); }),
              "\"00:1A:2B:3C:4D:5E\"");
    nuv::test::read_json("{\"m\":\"00:1a:2b:3c:4d:5e\"}", "m", address);
    EXPECT_EQ(address, ADDRESS);
    EXPECT_EQ(nuv::test::write_failure(ADDRESS), "Serialization of MACAddress failed");
    EXPECT_EQ(nuv::test::read_failure<MACAddress>("{\"m\":5}", "m"),
              "Deserialization of MACAddress \"m\" failed, got \"\"");
    EXPECT_EQ(message_of<std::invalid_argument>(
                  [&] { nuv::test::read_json("{\"m\":\"x\"}", "m", address); }),
              "'x' is no valid MACAddress string");
}
