// SPDX-License-Identifier: Apache-2.0
#include "nuv/ipv6_address.hpp"

#include <gtest/gtest.h>

#include "support/json_text.hpp"

namespace nuv::test {

namespace {

const IPv6Address BEFORE({9, 9, 9, 9, 9, 9, 9, 9});

/// The text of what `text` is read as, or the reason against it.
std::string read(const std::string& text) {
    IPv6Address address = BEFORE;
    const std::string failure =
        message_of<std::invalid_argument>([&] { return address.from_string(text), ""; });
    if (failure.empty()) {
        return address.to_string();
    }
    EXPECT_EQ(address, BEFORE) << text;
    const std::string begin = "Could not parse IPv6 address \"" + text + "\": ";
    EXPECT_EQ(failure.substr(0, begin.size()), begin);
    return failure.substr(begin.size());
}

}  // namespace

TEST(IPv6Address, IsPrintedInItsCanonicalForm) {
    const struct {
        const char *text, *result;
    } rows[] = {
        {"2001:db8::1", "2001:db8::1"},
        {"2001:0db8:0000:0000:0000:0000:0000:0001", "2001:db8::1"},
        {"2001:DB8:0:0:0:0:2:1", "2001:db8::2:1"},
        {"2001:db8:0:1:1:1:1:1", "2001:db8:0:1:1:1:1:1"},
        {"2001:db8::0:1:0:0:1", "2001:db8::1:0:0:1"},
        {"1:0:0:2:0:0:0:3", "1:0:0:2::3"},
        {"1:0:0:2:0:0:3:4", "1::2:0:0:3:4"},
        {"1:2:3:4:5:6::", "1:2:3:4:5:6::"},
        {"::3:4:5:6:7:8", "::3:4:5:6:7:8"},
        {"0:2:3:4:5:6:7:0", "0:2:3:4:5:6:7:0"},
        {"0:0:0:0:0:0:0:0", "::"},
        {"::", "::"},
        {"::1", "::1"},
        {"::ffff:10.0.0.1", "::ffff:10.0.0.1"},
        {"::FFFF:a00:1", "::ffff:10.0.0.1"},
        {"::10.0.0.1", "::a00:1"},
        {"64:ff9b::1.2.3.4", "64:ff9b::102:304"},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},
    };
    for (const auto& [text, result] : rows) {
        EXPECT_EQ(read(text), result) << text;
        EXPECT_EQ(IPv6Address(IPv6Address(text).to_segments()), IPv6Address(text));
    }
}

TEST(IPv6Address, IsRefusedForTheFirstReasonThatApplies) {
    const std::string few = "Contains too few segments";
    const std::string many = "Contains too many segments";
    const std::string multiple = "Multiple empty segments";
    const struct {
        const char* text;
        std::string result;
    } rows[] = {
        {"0000:0000:0000:0000:0000:ffff:100.100.100.100", "String too long"},
        {"1:2:3:4:5:6:7:8:9", many},
        {"1:2:3:4:5:6:7:8:x", many},
        {"::2:3:4:5:6:7:8", many},  // nine segments, although one zero segment would do
        {"1:2:3:4:5:6:7::", many},
        {"1::3:4:5:6:7:8", "1:0:3:4:5:6:7:8"},
        {"1::2:3:4:5:6:7:8", many},
        {"1:2:3:4:5:6::1.2.3.4", many},
        {"1:2:3:4:5:6:7:1.2.3.4", many},
        {"1:2:3:4:5::1.2.3.4", "1:2:3:4:5:0:102:304"},
        {"::2:3:4:5:6:1.2.3.4", "0:2:3:4:5:6:102:304"},
        {"1:2:3:4:5:1.2.3.4", few},
        {"1:2:3:4:5:6:7", few},
        {"1:2:3", few},
        {"1:2", few},
        {":", few},
        {"", few},
        {":1:2:3:4:5:6:7", "Unexpected segment separator at the beginning"},
        {"1:2:3:4:5:6:7:", "Unexpected segment separator at the end"},
        {"1::2::3", multiple},
        {"::1:", multiple},
        {":::", multiple},
        {"1::x::3", multiple},
        {"abcde::1", "Invalid segment \"abcde\""},
        {"1:2:3:4:5:6:7:x", "Invalid segment \"x\""},
        {"1::1.2.3", "Invalid segment \"1.2.3\""},
        {"1::1.2.3.256", "Invalid segment \"1.2.3.256\""},
        {"1.2.3.4::1", "Invalid segment \"1.2.3.4\""},
        {"1::2 3", "Invalid segment \"2 3\""},
        {"1:: ", "Invalid segment \" \""},
    };
    for (const auto& [text, result] : rows) {
        EXPECT_EQ(read(text), result) << text;
    }
    EXPECT_EQ(message_of<std::invalid_argument>([] { return IPv6Address("1::\"").to_string(); }),
              "Could not parse IPv6 address \"1::\\\"\": Invalid segment \"\\\"\"");
}

TEST(IPv6Address, SegmentsAreReadAsAScanOfAHexNumberReadsThem) {
    EXPECT_EQ(read("0x1f::+1"), "1f::1");
    EXPECT_EQ(read(" 1:\t2::3 : 4 "), "1:2::3:4");
    EXPECT_EQ(read("-1::-ff:0"), "ffff::ff01:0");
    EXPECT_EQ(read("0X::+0x1"), "::1");
    EXPECT_EQ(read("0x1ff::"), "Invalid segment \"0x1ff\"");
    EXPECT_EQ(read(std::string("a::1\0z", 6)), "a::1");
}

TEST(IPv6Address, IsMadeOfSixteenBytes) {
    const IPv6Address address({0x2001, 0xDB8, 0, 0, 0, 0, 0, 0x12});
    EXPECT_EQ(address.to_bytes_raw(), (std::vector<std::uint8_t>{0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0,
                                                                 0, 0, 0, 0, 0, 0, 0, 0x12}));
    EXPECT_EQ(IPv6Address(address.to_bytes()), address);
    EXPECT_EQ(message_of<std::invalid_argument>(
                  [] { return IPv6Address(std::vector<std::uint8_t>(15)).to_string(); }),
              "Expected exactly sixteen bytes for IPv6 address");
    EXPECT_EQ(IPv6Address::UNSPECIFIED, IPv6Address("::"));
}

TEST(IPv6Address, ClassesAreTheirPrefixes) {
    const struct {
        const char *text, *classes;
    } rows[] = {
        {"::", "unspecified unicast compatible_v4"},
        {"::1", "loopback unicast compatible_v4"},
        {"::2", "unicast compatible_v4"},
        {"::1:0:1", "unicast"},
        {"1::1", "unicast"},
        {"::ffff:0.0.0.1", "unicast mapped_v4"},
        {"::1:ffff:0:1", "unicast"},
        {"::fffe:0:1", "unicast"},
        {"2001:2::1", "benchmarking unicast"},
        {"2001:2:0:ffff::", "benchmarking unicast"},
        {"2001:2:1::", "unicast"},
        {"2001:db8:ffff::", "documentation unicast"},
        {"2001:db9::", "unicast"},
        {"fbff::", "unicast"},
        {"fc00::", "unique_local unicast"},
        {"fdff::", "unique_local unicast"},
        {"fe00::", "unicast"},
        {"fe7f::", "unicast"},
        {"fe80::", "link_local unicast"},
        {"febf:ffff::", "link_local unicast"},
        {"fec0::", "unicast"},
        {"ff02::1", "multicast"},
    };
    for (const auto& [text, classes] : rows) {
        const IPv6Address a(text);
        std::string held;
        const auto add = [&](bool holds, const char* name) { held += holds ? name : ""; };
        add(a.is_unspecified(), "unspecified ");
        add(a.is_loopback(), "loopback ");
        add(a.is_benchmarking(), "benchmarking ");
        add(a.is_documentation(), "documentation ");
        add(a.is_unique_local(), "unique_local ");
        add(a.is_link_local(), "link_local ");
        add(a.is_unicast(), "unicast ");
        add(a.is_multicast(), "multicast ");
        add(a.is_mapped_v4(), "mapped_v4 ");
        add(a.is_compatible_v4(), "compatible_v4 ");
        EXPECT_EQ(held, classes + std::string(" ")) << text;
    }
}

}  // namespace nuv::test
