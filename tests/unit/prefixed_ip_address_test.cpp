// SPDX-License-Identifier: Apache-2.0
#include "nuv/prefixed_ip_address.hpp"

#include "nuv/addresses.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

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

TEST(PrefixedIPAddress, MasksAndNetworksAreRightForEveryLength) {
    std::mt19937 random(2);
    for (const char* version : {"0.0.0.0", "::"}) {
        const auto address = IPAddress::guess_version_and_parse(version);
        std::ranges::generate(address->as_bytes_span_raw(),
                              [&] { return static_cast<std::uint8_t>(random()); });
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

TEST(PrefixedIPAddress, ContainsNetworksOfItsVersionAndPrefixThatAreNotLarger) {
    const std::tuple<const char*, const char*, bool> table[] = {
        {"10.0.0.0/8", "10.255.1.2/32", true}, {"10.0.0.0/8", "10.1.0.0/16", true},
        {"10.1.0.0/16", "10.0.0.0/8", false},  {"10.9.9.9/8", "10.0.0.0/8", true},
        {"10.0.0.0/8", "11.0.0.0/8", false},   {"::/0", "ffff::/128", true},
        {"::/0", "1.2.3.4/32", false},
    };
    for (const auto& [outer, inner, contains] : table) {
        EXPECT_EQ(prefixed(outer).contains_network(prefixed(inner)), contains) << inner;
    }
    EXPECT_FALSE(prefixed("::/0").contains(IPv4Address("1.2.3.4")));
}

TEST(PrefixedIPAddress, TakesNoLongerPrefixThanItsAddressAndNoNullAddress) {
    const auto message = [](auto&& make) { return message_of<std::invalid_argument>(make); };
    const IPv4Address v4("1.2.3.4");
    const std::string too_long = "Prefix length 33 is greater than length of the IPV4 address (32)";
    EXPECT_EQ(message([&] { return PrefixedIPAddress(v4, std::uint8_t{33}); }), too_long);
    EXPECT_EQ(message([&] { return PrefixedIPAddress(v4.clone(), 33); }), too_long);
    EXPECT_EQ(message([&] { return PrefixedIPAddress(v4, IPv6Address("ffff:ffff:8000::")); }),
              too_long);
    EXPECT_EQ(message([] { return PrefixedIPAddress(IPv6Address(), std::uint8_t{129}); }),
              "Prefix length 129 is greater than length of the IPV6 address (128)");
    EXPECT_EQ(message([] { return PrefixedIPAddress(std::unique_ptr<IPAddress>(), 0); }),
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

TEST(PrefixedIPAddress, IsOfNoUseAfterAMoveUntilItHasAnAddressAgain) {
    PrefixedIPAddress a = moved_from();
    EXPECT_TRUE(a == moved_from() && a < prefixed("0.0.0.0/32"));
    EXPECT_THROW(static_cast<void>(a.to_string()), std::logic_error);
    EXPECT_THROW(a.to_network_address(), std::logic_error);
    EXPECT_THROW(static_cast<void>(prefixed("::/0").contains_network(a)), std::logic_error);
    a.set_address(IPv4Address("1.2.3.4"));
    EXPECT_EQ(a.to_string(), "1.2.3.4/5");
    const PrefixedIPAddress copy = a;
    a.to_network_address();
    EXPECT_EQ(copy.to_string() + ' ' + a.to_string(), "1.2.3.4/5 0.0.0.0/5");
}

TEST(PrefixedIPAddress, PlaceholdersAreTheUnspecifiedAddress) {
    std::vector<PrefixedIPAddress> list;
    EXPECT_EQ(from_json(R"({"l":[{"version":"V6","value":"::1/128"}]})", "l", list), "");
    EXPECT_EQ(list.at(0).to_string(), "::1/128");
    std::istringstream is("x");
    SerializationContext ctx;
    using Binary = serialization::BinarySerializeFactory<PrefixedIPAddress>;
    EXPECT_EQ(Binary::make_default(is, ctx).to_string(), "0.0.0.0/0");
    YAJLNode node = parse("{}");
    using JSON = serialization::JSONSerializeFactory<PrefixedIPAddress>;
    EXPECT_EQ(JSON::make_default(node, ctx, "").to_string(), "0.0.0.0/0");
}

}  // namespace
}  // namespace nuv::test
