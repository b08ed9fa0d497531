// SPDX-License-Identifier: Apache-2.0
#include "nuv/mac_address.hpp"

#include <cctype>

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {
namespace {

const std::string TEXT = "00:1A:2B:3C:4D:5E";
const MACAddress ADDRESS({0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});

TEST(MACAddress, IsReadFromItsTextAndFromNoneOneCharacterOff) {
    for (std::size_t place = 0; place < TEXT.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            const auto text = std::string(TEXT).replace(place, 1, 1, static_cast<char>(byte));
            const bool fits = place % 3 == 2 ? byte == ':' : std::isxdigit(byte) != 0;
            EXPECT_EQ(MACAddress().parse_string(text), fits) << text;
        }
        EXPECT_FALSE(MACAddress().parse_string(std::string(TEXT).erase(place, 1)));
        EXPECT_FALSE(MACAddress().parse_string(std::string(TEXT).insert(place, 1, ':')));
    }
}

TEST(MACAddress, ARefusedTextLeavesTheOctetsThatWereReadBefore) {
    MACAddress a, b;
    EXPECT_FALSE(a.parse_string("1:2:F03:4D:5E:F::") || b.parse_string("1:2:3:4:5:6::::::"));
    EXPECT_EQ(a.to_string() + ' ' + b.to_string(), "01:02:F0:00:00:00 01:02:03:04:05:06");
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
    const auto read = [](const std::string& text) {
        std::istringstream is(text);
        MACAddress address;
        is >> std::setw(3) >> address;
        EXPECT_EQ(is.rdstate(), address == ADDRESS ? std::ios::goodbit : std::ios::failbit);
        EXPECT_EQ(is.width(), 3);
        is.clear();
        return address.to_string() + '|' + std::string(std::istreambuf_iterator<char>(is), {});
    };
    EXPECT_EQ(read(TEXT), TEXT + '|');
    EXPECT_EQ(read(" \n" + TEXT + "77 x"), TEXT + "|77 x");
    EXPECT_EQ(read(TEXT.substr(1)), "00:00:00:00:00:00|");  // the end of file is forgotten
    EXPECT_EQ(read("01:02:zz:zz:zz:zz x"), "00:00:00:00:00:00| x");

    std::istringstream throwing("zz");
    throwing.exceptions(std::ios::failbit | std::ios::eofbit);
    MACAddress address;
    EXPECT_THROW(throwing >> address, std::ios::failure);
    EXPECT_EQ(throwing.rdstate(), std::ios::failbit);
}

TEST(MACAddress, IndexIsCheckedAndTypeBitsChangeAlone) {
    EXPECT_EQ(message_of<std::out_of_range>([&] { return ADDRESS[6]; }),
              "array::at: __n (which is 6) >= _Nm (which is 6)");
    for (unsigned octet = 0; octet < 256; ++octet) {
        MACAddress a;
        a[0] = static_cast<std::uint8_t>(octet);
        EXPECT_EQ(a.is_group(), octet % 2 == 1);
        EXPECT_EQ(a.is_locally_administered(), octet / 2 % 2 == 1);
        EXPECT_EQ(MACAddress(a).set_individual()[0], octet & 0xFEU);
        EXPECT_EQ(MACAddress(a).set_group()[0], octet | 0x01U);
        EXPECT_EQ(MACAddress(a).set_universally_administered()[0], octet & 0xFDU);
        EXPECT_EQ(MACAddress(a).set_locally_administered()[0], octet | 0x02U);
    }
}

TEST(MACAddress, HashesWith32Bits) {
    EXPECT_EQ(std::hash<MACAddress>()(ADDRESS), 0x013759ABU);
    EXPECT_EQ(std::hash<MACAddress>()(MACAddress()), 0x7F77879DU);
    EXPECT_EQ(std::hash<MACAddress>()(MACAddress("FF:FF:FF:FF:FF:FF")), 0xC4F2886FU);
}

TEST(MACAddress, TwoAddressesAreInvalidAndGroupsAreNotIndividual) {
    const auto kind = [](const char* text) {
        const MACAddress address(text);
        return is_valid_mac_address(address) + is_valid_individual_mac_address(address);
    };
    EXPECT_EQ(kind("00:00:00:00:00:00") + kind("00:B0:52:00:00:01"), 0);
    EXPECT_EQ(kind("01:00:5E:00:00:01") + kind("FF:FF:FF:FF:FF:FF"), 2);
    EXPECT_EQ(kind("00:B0:52:00:00:02") + kind("02:00:00:00:00:00"), 4);
}

TEST(MACAddress, OfAnInterfaceIsWhatThePlatformKnows) {
    platform::FakePlatform platform;
    platform.interfaces().set_hwaddr("name_of_15_char", ADDRESS.octets());
    EXPECT_EQ(get_mac_for_ifname(InterfaceName("name_of_15_char")), ADDRESS);
    EXPECT_EQ(get_mac_for_ifname(InterfaceName("eth9")), MACAddress());
}

}  // namespace
}  // namespace nuv::test
