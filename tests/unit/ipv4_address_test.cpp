// SPDX-License-Identifier: Apache-2.0
#include "nuv/ipv4_address.hpp"

#include <gtest/gtest.h>

#include "support/json_text.hpp"

namespace nuv::test {

namespace {

/// The text of what `text` is read as, or the reason against it.
std::string read(const std::string& text) {
    IPv4Address address(0x09090909);
    const std::string failure =
        message_of<std::invalid_argument>([&] { return address.from_string(text), ""; });
    if (failure.empty()) {
        return address.to_string();
    }
    EXPECT_EQ(address.to_string(), "9.9.9.9") << text;
    const std::string begin = "Could not parse IPv4 address \"" + text + "\": ";
    EXPECT_EQ(failure.substr(0, begin.size()), begin);
    return failure.substr(begin.size());
}

}  // namespace

TEST(IPv4Address, IsReadAsAScanOfFourNumbersReadsIt) {
    const std::string octets = "String contains invalid octets";
    const struct {
        std::string text, result;
    } rows[] = {
        {"192.168.1.1", "192.168.1.1"},
        {"255.255.255.255", "255.255.255.255"},
        {"001.02.3.000", "1.2.3.0"},
        {"+1. 2.\t3.4 ", "1.2.3.4"},
        {"  1.2.3.4", "1.2.3.4"},
        {std::string("1.2.3.4\0x", 9), "1.2.3.4"},
        {"1.2.3.4.5.6.7.8.", "String is too long"},
        {"192.168.1.1     ", "String is too long"},
        {"192.168.1.1    ", "192.168.1.1"},
        {"192.168.1.256", "Value 256 at position 3 is invalid"},
        {"1.999.300.4", "Value 999 at position 1 is invalid"},
        {"-1.2.3.4", "Value 4294967295 at position 0 is invalid"},
        {"1.2.-99.4", "Value 4294967197 at position 2 is invalid"},
        {"-0.2.3.4", "0.2.3.4"},
        {"999.1.2", octets},
        {"1.2.3", octets},
        {"1.2.3.", octets},
        {"1.2.3.4x", octets},
        {"1.2.3.4 x", octets},
        {"1.2.3.4.", octets},
        {"1234.1.1.1", octets},
        {"1 .2.3.4", octets},
        {"+.1.1.1", octets},
        {"0x1.1.1.1", octets},
        {"a.b.c.d", octets},
        {"", octets},
    };
    for (const auto& [text, result] : rows) {
        EXPECT_EQ(read(text), result) << '"' << text << '"';
    }
}

TEST(IPv4Address, IsMadeOfANumberInHostOrderOrOfFourBytes) {
    const IPv4Address address(0xC0A80102);
    EXPECT_EQ(address.to_string(), "192.168.1.2");
    EXPECT_EQ(address.to_uint(), 0xC0A80102U);
    EXPECT_EQ(IPv4Address(address.as_bytes_span()), address);
    EXPECT_EQ(IPv4Address(address.to_bytes_raw()), address);
    for (const std::size_t size : {0U, 3U, 5U}) {
        EXPECT_EQ(message_of<std::invalid_argument>(
                      [&] { return IPv4Address(std::vector<std::byte>(size)).to_string(); }),
                  "Expected exactly four bytes for IPv4 address");
    }
    EXPECT_EQ(IPv4Address::UNSPECIFIED, IPv4Address("0.0.0.0"));
}

TEST(IPv4Address, ClassesBeginAndEndWhereTheRFCsSay) {
    using Is = bool (IPv4Address::*)() const noexcept;
    const struct {
        Is is;
        std::vector<std::pair<const char*, const char*>> ranges;
    } classes[] = {
        {&IPv4Address::is_loopback, {{"127.0.0.0", "127.255.255.255"}}},
        {&IPv4Address::is_link_local, {{"169.254.0.0", "169.254.255.255"}}},
        {&IPv4Address::is_multicast, {{"224.0.0.0", "239.255.255.255"}}},
        {&IPv4Address::is_private,
         {{"10.0.0.0", "10.255.255.255"},
          {"172.16.0.0", "172.31.255.255"},
          {"192.168.0.0", "192.168.255.255"}}},
        {&IPv4Address::is_benchmarking, {{"198.18.0.0", "198.19.255.255"}}},
        {&IPv4Address::is_documentation,
         {{"192.0.2.0", "192.0.2.255"},
          {"198.51.100.0", "198.51.100.255"},
          {"203.0.113.0", "203.0.113.255"}}},
        {&IPv4Address::is_unspecified, {{"0.0.0.0", "0.0.0.0"}}},
        {&IPv4Address::is_broadcast, {{"255.255.255.255", "255.255.255.255"}}},
        {&IPv4Address::is_unicast,
         {{"0.0.0.0", "223.255.255.255"}, {"240.0.0.0", "255.255.255.254"}}},
    };
    for (const auto& row : classes) {
        // Every border of every class, and the addresses beside it.
        for (const auto& other : classes) {
            for (const auto& range : other.ranges) {
                for (const char* border : {range.first, range.second}) {
                    for (const std::uint32_t step : {0xFFFFFFFFU, 0U, 1U}) {
                        const IPv4Address address(IPv4Address(border).to_uint() + step);
                        const bool in = std::ranges::any_of(row.ranges, [&](const auto& r) {
                            return IPv4Address(r.first) <= address &&
                                   address <= IPv4Address(r.second);
                        });
                        EXPECT_EQ((address.*row.is)(), in)
                            << address << ", class of " << row.ranges.front().first;
                    }
                }
            }
        }
    }
}

}  // namespace nuv::test
