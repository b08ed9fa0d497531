// SPDX-License-Identifier: Apache-2.0
#include "nuv/ip_address.hpp"

#include <typeinfo>
#include <unordered_set>

#include "nuv/addresses.hpp"
#include "tests/support/hex.hpp"
#include "tests/support/ip_texts.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::test {

TEST(IPAddress, ClassesBeginAndEndAsListed) {
    for (const auto& [text, classes] : listed_cases("ip_classes.tsv")) {
        const auto a = IPAddress::guess_version_and_parse(text);
        const auto* v4 = dynamic_cast<const IPv4Address*>(a.get());
        const auto* v6 = dynamic_cast<const IPv6Address*>(a.get());
        std::string held;
        for (const auto& [holds, name] : std::initializer_list<std::pair<bool, const char*>>{
                 {a->is_unspecified(), "unspecified "},
                 {a->is_loopback(), "loopback "},
                 {a->is_benchmarking(), "benchmarking "},
                 {a->is_documentation(), "documentation "},
                 {a->is_link_local(), "link_local "},
                 {a->is_unicast(), "unicast "},
                 {a->is_multicast(), "multicast "},
                 {v4 != nullptr && v4->is_private(), "private "},
                 {v4 != nullptr && v4->is_broadcast(), "broadcast "},
                 {v6 != nullptr && v6->is_unique_local(), "unique_local "},
                 {v6 != nullptr && v6->is_mapped_v4(), "mapped_v4 "},
                 {v6 != nullptr && v6->is_compatible_v4(), "compatible_v4 "}}) {
            held += holds ? name : "";
        }
        EXPECT_EQ(held, classes + ' ') << text;
    }
}

TEST(IPAddress, OrdersEveryV4AddressBeforeEveryV6Address) {
    const IPv4Address high(0xFFFFFFFF);
    const IPv6Address low;
    EXPECT_TRUE(high < low && low > high && high <= low && high != low);
    EXPECT_THROW(static_cast<void>(high.is_equal(low)), std::bad_cast);
    EXPECT_THROW(static_cast<void>(high.is_lt(low)), std::bad_cast);
    EXPECT_THROW(static_cast<void>(low.is_lt_eq(high)), std::bad_cast);
    EXPECT_TRUE(IPv4Address("9.255.0.0") < IPv4Address("10.0.0.0"));
    EXPECT_TRUE(IPv6Address("::ffff") < IPv6Address("::1:0"));
    EXPECT_TRUE(low.is_lt_eq(low) && !low.is_lt(low) && low.is_equal(low));
}

TEST(IPAddress, CopiesAreOfTheSameTypeAndSpansReachTheOctets) {
    for (const char* text : {"1.2.3.4", "1:2::3"}) {
        const auto address = IPAddress::guess_version_and_parse(text);
        auto copy = address->clone();
        EXPECT_EQ(*copy, *address);
        EXPECT_EQ(std::hash<IPAddress>()(*copy), std::hash<IPAddress>()(*address));
        EXPECT_EQ(copy->num_octets(), copy->is_v4() ? 4U : 16U);
        EXPECT_EQ(copy->to_bytes().size(), copy->num_octets());
        copy->as_bytes_span_raw().back() = 0xFF;
        copy->as_bytes_span().front() = std::byte{0x10};
        EXPECT_EQ(copy->to_string(), copy->is_v4() ? "16.2.3.255" : "1001:2::ff");
        EXPECT_TRUE(copy->make_default()->is_unspecified());
        EXPECT_EQ(copy->make_default()->get_version(), address->get_version());
    }
    IPv4Address a("1.1.1.1"), b("2.2.2.2");
    a.swap(b);
    EXPECT_EQ(a.to_string() + b.to_string(), "2.2.2.21.1.1.1");
    EXPECT_EQ((std::unordered_set<IPv4Address>{a, b, a}).size(), 2U);
}

TEST(IPAddress, IsMadeOfANumberInHostOrderOrOfItsBytes) {
    const IPv4Address v4(0xC0A80102);
    EXPECT_EQ(v4.to_string(), "192.168.1.2");
    EXPECT_EQ(v4.to_uint(), 0xC0A80102U);
    EXPECT_TRUE(IPv4Address(v4.as_bytes_span()) == v4 && IPv4Address(v4.to_bytes_raw()) == v4);
    EXPECT_EQ(IPv4Address::UNSPECIFIED, IPv4Address("0.0.0.0"));
    const IPv6Address v6({0x2001, 0xDB8, 0, 0, 0, 0, 0, 0x12});
    EXPECT_EQ(v6.to_bytes_raw(), from_hex("2001 0DB8 0000 0000 0000 0000 0000 0012"));
    EXPECT_EQ(IPv6Address(v6.to_bytes()), v6);
    EXPECT_EQ(IPv6Address::UNSPECIFIED, IPv6Address("::"));
    for (const std::size_t size : {0U, 3U, 5U, 15U, 17U}) {
        const std::vector<std::byte> bytes(size);
        EXPECT_EQ(message_of<std::invalid_argument>([&] { return IPv4Address(bytes); }),
                  "Expected exactly four bytes for IPv4 address");
        EXPECT_EQ(message_of<std::invalid_argument>([&] { return IPv6Address(bytes); }),
                  "Expected exactly sixteen bytes for IPv6 address");
    }
}

TEST(IPAddress, IsMadeOfTheVersionInJson) {
    for (const auto& [version, text] : {std::pair("V4", "0.0.0.0"), {"V6", "::"}}) {
        YAJLNode node = parse(std::string(R"({"value":"x","version":")") + version + "\"}");
        SerializationContext ctx;
        EXPECT_EQ(create_ip_address(node, ctx)->to_string(), text);
    }
}

TEST(IPAddress, IsPrintedAsInetNtopPrintsItAndReadBack) {
    // Zeros at every set of places, between numbers of each length and as in a mapped address.
    for (unsigned zeros = 0; zeros < 256; ++zeros) {
        for (const std::uint16_t other :
             std::array<std::uint16_t, 5>{1, 0xFF, 0xA0B, 0x1000, 0xFFFF}) {
            IPv6Address::Segments segments{};
            for (std::size_t i = 0; i < segments.size(); ++i) {
                segments[i] = (zeros >> i & 1U) != 0 ? 0 : other;
            }
            const IPv6Address v6(segments);
            EXPECT_EQ(v6.to_segments(), segments);
            EXPECT_EQ(check_printed(v6) + check_printed(IPv4Address(zeros << 24U | other)), "");
        }
    }
}

}  // namespace nuv::test
