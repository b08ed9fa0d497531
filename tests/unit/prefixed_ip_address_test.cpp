// SPDX-License-Identifier: Apache-2.0
#include "nuv/prefixed_ip_address.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <sstream>

#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "support/json_text.hpp"

namespace nuv::test {

namespace {

PrefixedIPAddress prefixed(const std::string& text) {
    return PrefixedIPAddress::guess_version_and_parse(text);
}

PrefixedIPAddress moved_from() {
    PrefixedIPAddress source = prefixed("1.2.3.4/5");
    const PrefixedIPAddress taken = std::move(source);
    return source;  // NOLINT(bugprone-use-after-move): this is what is looked at
}

bool bit_of(const IPAddress& address, std::size_t index) {
    return (address.as_bytes_span_raw()[index / 8] >> (7 - index % 8) & 1) != 0;
}

}  // namespace

TEST(PrefixedIPAddress, MasksAndNetworksAreRightForEveryLength) {
    std::mt19937 random(2);
    for (const char* version : {"0.0.0.0", "::"}) {
        const auto address = IPAddress::guess_version_and_parse(version);
        for (std::uint8_t& octet : address->as_bytes_span_raw()) {
            octet = static_cast<std::uint8_t>(random());
        }
        const std::size_t bits = 8 * address->num_octets();
        for (std::size_t length = 0; length <= bits; ++length) {
            const PrefixedIPAddress a(*address, static_cast<std::uint8_t>(length));
            const auto netmask = a.get_netmask();
            const auto host_mask = a.get_host_identifier_mask();
            const PrefixedIPAddress network = a.get_network_address();
            for (std::size_t i = 0; i < bits; ++i) {
                EXPECT_EQ(bit_of(*netmask, i), i < length);
                EXPECT_EQ(bit_of(*host_mask, i), i >= length);
                EXPECT_EQ(bit_of(network.get_address(), i), i < length && bit_of(*address, i));
            }
            EXPECT_EQ(PrefixedIPAddress(*address, *netmask), a);
            EXPECT_TRUE(network.is_network_address() && network.get_network_address() == network);
            EXPECT_EQ(a.is_network_address(), network == a);
            EXPECT_TRUE(a.contains(*address) && network.contains_network(a));
            if (length > 0) {
                const auto outside = address->clone();
                outside->as_bytes_span_raw()[(length - 1) / 8] ^=
                    static_cast<std::uint8_t>(0x80U >> (length - 1) % 8);
                EXPECT_FALSE(a.contains(*outside)) << a;
            }
        }
    }
}

TEST(PrefixedIPAddress, ContainsWhatSharesItsVersionAndPrefix) {
    EXPECT_TRUE(prefixed("10.0.0.0/8").contains(IPv4Address("10.255.1.2")));
    EXPECT_TRUE(prefixed("10.0.0.0/8").contains_network(prefixed("10.1.0.0/16")));
    EXPECT_FALSE(prefixed("10.1.0.0/16").contains_network(prefixed("10.0.0.0/8")));
    EXPECT_TRUE(prefixed("10.9.9.9/8").contains_network(prefixed("10.0.0.0/8")));
    EXPECT_TRUE(prefixed("::/0").contains(IPv6Address("ffff::")));
    EXPECT_FALSE(prefixed("::/0").contains(IPv4Address("1.2.3.4")));
    EXPECT_FALSE(prefixed("::/0").contains_network(prefixed("1.2.3.4/32")));
}

TEST(PrefixedIPAddress, TakesNoLongerPrefixThanItsAddressAndNoNullAddress) {
    const auto message = [](auto&& make) {
        return message_of<std::invalid_argument>([&] { return make().to_string(); });
    };
    const IPv4Address v4("1.2.3.4");
    const std::string too_long = "Prefix length 33 is greater than length of the IPV4 address (32)";
    EXPECT_EQ(message([&] { return PrefixedIPAddress(v4, std::uint8_t{33}); }), too_long);
    EXPECT_EQ(message([&] { return PrefixedIPAddress(v4.clone(), 33); }), too_long);
    EXPECT_EQ(message([&] { return PrefixedIPAddress(v4, IPv6Address("ffff:ffff:8000::")); }),
              too_long);
    EXPECT_EQ(message([&] { return PrefixedIPAddress(IPv6Address(), std::uint8_t{129}); }),
              "Prefix length 129 is greater than length of the IPV6 address (128)");
    EXPECT_EQ(message([&] { return PrefixedIPAddress(std::unique_ptr<IPAddress>(), 0); }),
              "Can't pass a nullptr as an IP address to PrefixedIPAddress");
}

TEST(PrefixedIPAddress, CountsTheOnesOfAMaskWhereverTheyAre) {
    EXPECT_EQ(PrefixedIPAddress(IPv4Address("1.2.3.4"), IPv4Address("255.0.255.0")).to_string(),
              "1.2.3.4/16");
}

TEST(PrefixedIPAddress, KeepsItsPrefixLengthWithAShorterAddress) {
    PrefixedIPAddress a = prefixed("1:2::3/64");
    a.set_address(IPv4Address("1.2.3.4"));
    EXPECT_EQ(a.to_string(), "1.2.3.4/64");
    EXPECT_EQ(a.get_netmask()->to_string(), "255.255.255.255");
    EXPECT_TRUE(a.is_network_address() && a.contains(IPv4Address("1.2.3.4")));
    EXPECT_FALSE(a.contains(IPv4Address("1.2.3.5")));
    EXPECT_THROW(a.set_prefix_length(33), std::invalid_argument);
    EXPECT_EQ(a.get_prefix_length(), 64);
}

TEST(PrefixedIPAddress, OrdersByAddressThenTheLongerPrefixFirstAndNullBeforeAll) {
    std::vector<PrefixedIPAddress> sorted{moved_from(), moved_from()};
    for (const char* text : {"9.0.0.0/8", "10.0.0.0/24", "10.0.0.0/8", "10.0.0.1/32", "::/128",
                             "::/0", "::1/128", "fe80::/10"}) {
        sorted.push_back(prefixed(text));
    }
    std::vector<PrefixedIPAddress> shuffled = sorted;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(7));
    std::sort(shuffled.begin(), shuffled.end());
    EXPECT_TRUE(shuffled == sorted);
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        for (std::size_t j = 0; j < sorted.size(); ++j) {
            const auto rank = [](std::size_t k) { return k < 2 ? 0 : k; };
            const std::size_t a = rank(i), b = rank(j);
            EXPECT_EQ(sorted[i] == sorted[j], a == b);
            EXPECT_EQ(sorted[i] != sorted[j], a != b);
            EXPECT_EQ(sorted[i] < sorted[j], a < b) << i << ' ' << j;
            EXPECT_EQ(sorted[i] <= sorted[j], a <= b);
            EXPECT_EQ(sorted[i] > sorted[j], a > b);
            EXPECT_EQ(sorted[i] >= sorted[j], a >= b);
        }
    }
}

TEST(PrefixedIPAddress, IsOfNoUseAfterAMoveUntilItHasAnAddressAgain) {
    PrefixedIPAddress a = moved_from();
    EXPECT_THROW(static_cast<void>(a.to_string()), std::logic_error);
    EXPECT_THROW(a.to_network_address(), std::logic_error);
    EXPECT_THROW(static_cast<void>(prefixed("::/0").contains_network(a)), std::logic_error);
    a.set_address(IPv4Address("1.2.3.4"));
    EXPECT_EQ(a.to_string(), "1.2.3.4/5");
    const PrefixedIPAddress copy = a;
    a.to_network_address();
    EXPECT_EQ(copy.to_string() + ' ' + a.to_string(), "1.2.3.4/5 0.0.0.0/5");
}

TEST(PrefixedIPAddress, JsonIsVersionAndText) {
    const PrefixedIPAddress a = prefixed("192.168.0.0/16");
    const std::string text = R"({"version":"V4","value":"192.168.0.0/16"})";
    EXPECT_EQ(to_json(a), text);
    EXPECT_EQ(to_json(a, 3),
              "Serialization of PrefixedIPAddress \"192.168.0.0/16\" failed: Serialization of "
              "CharArray failed");
    EXPECT_EQ(to_json(a, 14),
              "Serialization of PrefixedIPAddress \"192.168.0.0/16\" failed: Serialization of "
              "std::string failed");

    const std::string begin = "Deserialization of PrefixedIPAddress failed: ";
    const std::string expected = begin + "Expected prefixed IP address but got ";
    const std::string too_long = "Prefix length 44 is greater than length of the IPV4 address (32)";
    const struct {
        const char *version, *value;
        std::string result;
    } rows[] = {
        {"V4", "192.168.0.0/16", ""},
        {"V6", "1::/128", "1::/128"},
        {"V4", "1.2.3.4/264", "1.2.3.4/8"},
        {"V4", "1.2.3.4/8abc", "1.2.3.4/8"},
        {"V4", "1.2.3.4/ 8", "1.2.3.4/8"},
        {"V6", "1::/4294967336",
         "Prefix length 255 is greater than length of the IPV6 address (128)"},
        {"V4", "1.2.3.4/300", too_long},
        {"V4", "1.2.3.4/-212", too_long},
        {"V4", "1.2.3.4/-1", "Prefix length 255 is greater than length of the IPV4 address (32)"},
        {"V4", "1.2.3.4", expected + "\"1.2.3.4\" which does not contain expected '/'"},
        {"V4", "1.2.3/", expected + "\"1.2.3/\" which does not contain a prefix length"},
        {"V4", "1.2.3/x8", begin + "Could not parse prefix length from \"x8\""},
        {"V4", "1.2.3.4//8", begin + "Could not parse prefix length from \"/8\""},
        {"V4", "1.2.3/8",
         begin + "Could not parse \"1.2.3\": Could not parse IPv4 address \"1.2.3\": String "
                 "contains invalid octets"},
        {"V6", "1.2.3.4/8",
         begin + "Could not parse \"1.2.3.4\": Could not parse IPv6 address \"1.2.3.4\": "
                 "Contains too few segments"},
    };
    for (const auto& [version, value, result] : rows) {
        PrefixedIPAddress read = a;
        const std::string json =
            std::string(R"({"version":")") + version + R"(","value":")" + value + "\"}";
        std::string failure;
        try {
            failure = from_json(json, "", read);
            EXPECT_TRUE(failure.empty() || failure.starts_with(begin)) << failure;
        } catch (const std::invalid_argument& error) {
            failure = error.what();  // the one that passes through
            EXPECT_TRUE(failure.starts_with("Prefix length ")) << failure;
        }
        EXPECT_EQ(failure.empty() ? read.to_string() : failure, result.empty() ? value : result);
        EXPECT_TRUE(failure.empty() || read == a);
    }
    PrefixedIPAddress read = a;
    EXPECT_EQ(from_json(R"({"version":"V4"})", "", read),
              "Deserialization of std::string \"value\" failed");
}

TEST(PrefixedIPAddress, PlaceholdersAreTheUnspecifiedAddress) {
    std::vector<PrefixedIPAddress> list;
    EXPECT_EQ(from_json(R"({"l":[{"version":"V6","value":"::1/128"}]})", "l", list), "");
    EXPECT_EQ(list.at(0).to_string(), "::1/128");
    std::istringstream is("x");
    SerializationContext ctx;
    EXPECT_EQ(
        serialization::BinarySerializeFactory<PrefixedIPAddress>::make_default(is, ctx).to_string(),
        "0.0.0.0/0");
    YAJLNode node = parse("{}");
    EXPECT_EQ(serialization::JSONSerializeFactory<PrefixedIPAddress>::make_default(node, ctx, "")
                  .to_string(),
              "0.0.0.0/0");
}

}  // namespace nuv::test
