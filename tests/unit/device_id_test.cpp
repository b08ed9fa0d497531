// SPDX-License-Identifier: Apache-2.0
#include "nuv/device_id.hpp"

#include "nuv/addresses.hpp"
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
    for (std::size_t size = 0; size < hex.size(); size += 3) {
        const char* integer = size / 3 % 9 < 2 ? "std::uint16_t" : "std::uint8_t";
        DeviceID read = longest;
        EXPECT_EQ(read_octets(hex.substr(0, size), read),
                  std::string("Deserialization of type ") + integer + " failed.");
        EXPECT_EQ(read, longest);
    }
    EXPECT_THROW(PortID::of_interface_name(InterfaceName()), std::invalid_argument);
}

}  // namespace
}  // namespace nuv::test
