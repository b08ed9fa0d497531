// SPDX-License-Identifier: Apache-2.0
#include "nuv/device_id.hpp"

#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "tests/support/codecs.hpp"

namespace nuv::test {
namespace {

const MACAddress MAC("02:00:00:00:00:01");

TEST(DeviceID, IsBuiltFromAddressesAndNames) {
    const auto chassis = ChassisID::of_mac_address(MAC);
    const auto port = PortID::of_interface_name(InterfaceName("wlan0"));
    EXPECT_EQ(DeviceID(chassis, port).to_string(),
              "macAddress=02:00:00:00:00:01 interfaceName=wlan0");
    EXPECT_EQ(chassis.get_mac_address(), MAC);
    EXPECT_EQ(chassis.get_network_address(), nullptr);
    EXPECT_EQ(port.get_mac_address(), std::nullopt);

    const auto v4 = ChassisID::of_network_address(IPv4Address("10.0.0.1"));
    EXPECT_TRUE(std::ranges::equal(v4.get_octets(), from_hex("01 0a 00 00 01")));
    const auto v6 = PortID::of_network_address(IPv6Address("fe80::1"));
    EXPECT_EQ(v6.get_octets().front(), 2);
    EXPECT_EQ(*v6.get_network_address(), IPv6Address("fe80::1"));
    EXPECT_EQ(DeviceID(v4, v6).to_string(), "networkAddress=10.0.0.1 networkAddress=fe80::1");
    EXPECT_EQ(DeviceID().to_string(), "macAddress=00:00:00:00:00:00 macAddress=00:00:00:00:00:00");
}

TEST(DeviceID, IdentifiersAreWellFormedOrRefused) {
    const struct {
        int subtype;
        Octets octets;
        std::string reason;
    } rows[] = {
        {0, {1}, "subtype 0 is reserved"},
        {8, {1}, "subtype 8 is reserved"},
        {7, {}, "size 0 is not in the range [1, 255]"},
        {7, Octets(256), "size 256 is not in the range [1, 255]"},
        {4, Octets(5), "a MAC address has 6 octets, not 5"},
        {5, Octets(5), "a network address of family 0 in 5 octets is neither IPv4 nor IPv6"},
        {5, Octets(17, 1), "a network address of family 1 in 17 octets is neither IPv4 nor IPv6"},
        {5, Octets(4, 1), "a network address of family 1 in 4 octets is neither IPv4 nor IPv6"},
        {5, Octets(5, 2), "a network address of family 2 in 5 octets is neither IPv4 nor IPv6"},
        {5, Octets(7, 6), "a network address of family 6 in 7 octets is neither IPv4 nor IPv6"},
    };
    for (const auto& [subtype, octets, reason] : rows) {
        EXPECT_EQ(message_of<std::invalid_argument>(
                      [&] { ChassisID(static_cast<ChassisIDSubtype>(subtype), octets); }),
                  "ChassisID: " + reason);
    }
    EXPECT_THROW(PortID(PortIDSubtype::MAC_ADDRESS, Octets(5)), std::invalid_argument);
    EXPECT_THROW(PortID::of_interface_name(InterfaceName()), std::invalid_argument);
}

TEST(DeviceID, EveryOctetHasATextThatIsReadBack) {
    Octets all(255);
    std::iota(all.begin(), all.end(), std::uint8_t{1});
    const PortID id(PortIDSubtype::LOCALLY_ASSIGNED, all);
    EXPECT_EQ(PortID(id.to_string()), id);
}

TEST(DeviceID, BinaryFormIsTheTwoTLVsThatBeginAnLLDPDU) {
    const DeviceID id("macAddress=02:00:00:00:00:01 interfaceName=wlan0");
    const std::string hex = "02 07 04 02 00 00 00 00 01 04 06 05 77 6c 61 6e 30";
    const DeviceID longest(ChassisID(ChassisIDSubtype::LOCALLY_ASSIGNED, Octets(255, 9)),
                           PortID("interfaceAlias=x"));
    EXPECT_EQ(written(id), hex);
    for (const DeviceID& device : {id, longest}) {
        DeviceID read("local=a local=b");
        EXPECT_EQ(read_octets(written(device) + " 00 00", read), "");
        EXPECT_EQ(read, device);
        EXPECT_EQ(written(read), written(device));
    }
    const std::string chassis = "Deserialization of ChassisID failed: ";
    const std::string port = "Deserialization of PortID failed: ";
    std::vector<std::pair<std::string, std::string>> rows{
        {"0407 04 020000000001", chassis + "TLV type 2 is not 1"},
        {"0201 04", chassis + "TLV length 1 is not in the range [2, 256]"},
        {"0301 07", chassis + "TLV length 257 is not in the range [2, 256]"},
        {"0202 00 01", chassis + "subtype 0 is reserved"},
        {"0206 04 0200000000", chassis + "a MAC address has 6 octets, not 5"},
        {"0207 04 020000000001 0207 04 020000000001", port + "TLV type 1 is not 2"},
        {"0207 04 020000000001 0402 08 01", port + "subtype 8 is reserved"},
    };
    for (std::size_t size = 0; size < hex.size(); size += 3) {
        const std::size_t in_tlv = size / 3 % 9;
        rows.emplace_back(hex.substr(0, size),
                          in_tlv < 2 ? "Deserialization of type std::uint16_t failed."
                                     : "Deserialization of type std::uint8_t failed.");
    }
    for (const auto& [octets, reason] : rows) {
        DeviceID read = longest;
        EXPECT_EQ(read_octets(octets, read), reason) << octets;
        EXPECT_EQ(read, longest);
    }
}

}  // namespace
}  // namespace nuv::test
