// SPDX-License-Identifier: Apache-2.0
#include "nuv/device_id.hpp"

#include <gtest/gtest.h>

#include <sstream>

#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "support/enum_texts.hpp"
#include "support/json_text.hpp"
#include "tools/vectors/hex.hpp"

namespace nuv::test {

namespace {

const MACAddress MAC("02:00:00:00:00:01");

template <class T>
std::string to_octets(const T& value) {
    std::ostringstream os;
    SerializationContext ctx;
    value.serialize_impl(os, ctx);
    return os.str();
}

}  // namespace

TEST(DeviceID, SubtypesHaveTheNamesOfTheMIB) {
    expect_texts<ChassisIDSubtype>(
        {"|chassisComponent|interfaceAlias|portComponent|macAddress|"
         "networkAddress|interfaceName|local",
         "RESERVED ", Number::APPENDED});
    expect_texts<PortIDSubtype>(
        {"|interfaceAlias|portComponent|macAddress|networkAddress|"
         "interfaceName|agentCircuitId|local",
         "RESERVED ", Number::APPENDED});
}

TEST(DeviceID, IsBuiltFromAddressesAndNames) {
    const auto chassis = ChassisID::of_mac_address(MAC);
    const auto port = PortID::of_interface_name(InterfaceName("wlan0"));
    EXPECT_EQ(DeviceID(chassis, port).to_string(),
              "macAddress=02:00:00:00:00:01 interfaceName=wlan0");
    EXPECT_EQ(chassis.get_mac_address(), MAC);
    EXPECT_EQ(chassis.get_network_address(), nullptr);
    EXPECT_EQ(port.get_mac_address(), std::nullopt);

    const auto v4 = ChassisID::of_network_address(IPv4Address("10.0.0.1"));
    EXPECT_TRUE(std::ranges::equal(v4.get_octets(), std::vector<std::uint8_t>{1, 10, 0, 0, 1}));
    const auto v6 = PortID::of_network_address(IPv6Address("fe80::1"));
    EXPECT_EQ(v6.get_octets().front(), 2);
    EXPECT_EQ(*v6.get_network_address(), IPv6Address("fe80::1"));
    EXPECT_EQ(DeviceID(v4, v6).to_string(), "networkAddress=10.0.0.1 networkAddress=fe80::1");
}

TEST(DeviceID, IdentifiersAreWellFormedOrRefused) {
    const auto refusal = [](int subtype, std::vector<std::uint8_t> octets) {
        return message_of<std::invalid_argument>(
            [&] { return ChassisID(static_cast<ChassisIDSubtype>(subtype), octets).to_string(); });
    };
    EXPECT_EQ(refusal(0, {1}), "ChassisID: subtype 0 is reserved");
    EXPECT_EQ(refusal(8, {1}), "ChassisID: subtype 8 is reserved");
    EXPECT_EQ(refusal(7, {}), "ChassisID: size 0 is not in the range [1, 255]");
    EXPECT_EQ(refusal(7, std::vector<std::uint8_t>(256)),
              "ChassisID: size 256 is not in the range [1, 255]");
    EXPECT_EQ(refusal(4, std::vector<std::uint8_t>(5)),
              "ChassisID: a MAC address has 6 octets, not 5");
    for (const auto& [family, size] : {std::pair(1, 17), {2, 5}, {1, 4}, {6, 7}, {0, 5}}) {
        std::vector<std::uint8_t> octets(static_cast<std::size_t>(size));
        octets[0] = static_cast<std::uint8_t>(family);
        EXPECT_EQ(refusal(5, octets), "ChassisID: a network address of family " +
                                          std::to_string(family) + " in " + std::to_string(size) +
                                          " octets is neither IPv4 nor IPv6");
    }
    EXPECT_THROW(PortID(PortIDSubtype::MAC_ADDRESS, std::vector<std::uint8_t>(5)),
                 std::invalid_argument);
    EXPECT_THROW(PortID::of_interface_name(InterfaceName()), std::invalid_argument);
}

TEST(DeviceID, EveryOctetHasATextThatIsReadBack) {
    std::vector<std::uint8_t> all;
    for (unsigned octet = 1; octet < 256; ++octet) {
        all.push_back(static_cast<std::uint8_t>(octet));
    }
    const PortID id(PortIDSubtype::LOCALLY_ASSIGNED, all);
    EXPECT_EQ(PortID(id.to_string()), id);
    EXPECT_EQ(PortID(PortIDSubtype::INTERFACE_ALIAS,
                     std::vector<std::uint8_t>{'a', ' ', '\\', '=', 0x7F, 0, 0xE9})
                  .to_string(),
              "interfaceAlias=a\\x20\\x5c=\\x7f\\x00\\xe9");
    for (const char* text :
         {"", "wlan0", "=a", "other=a", "interfaceName=", "interfaceName=a b", "interfaceName=\\",
          "interfaceName=\\x1", "interfaceName=\\x1g", "interfaceName=\\n41", "macAddress=1",
          "macAddress=\\x02\\x00\\x00\\x00\\x00\\x01", "networkAddress=a", "interfaceName=\xE9",
          "chassisComponent=a", "RESERVED 0=a"}) {
        PortID read = id;
        EXPECT_FALSE(read.parse_string(text)) << text;
        EXPECT_EQ(read, id);
    }
}

TEST(DeviceID, BinaryFormIsTheTwoTLVsThatBeginAnLLDPDU) {
    const DeviceID id("macAddress=02:00:00:00:00:01 interfaceName=wlan0");
    const auto octets = from_hex("0207 04 020000000001 0406 05 776C616E30");
    EXPECT_EQ(to_octets(id), std::string(octets.begin(), octets.end()));
    const DeviceID longest(
        ChassisID(ChassisIDSubtype::LOCALLY_ASSIGNED, std::vector<std::uint8_t>(255, 9)),
        PortID("interfaceAlias=x"));
    for (const DeviceID& written : {id, longest}) {
        DeviceID read("local=a local=b");
        std::istringstream is(to_octets(written) + "0000");
        SerializationContext ctx;
        read.deserialize_impl(is, ctx);
        EXPECT_EQ(read, written);
        EXPECT_EQ(is.tellg(), static_cast<std::streamoff>(to_octets(written).size()));
    }
    const std::string chassis = "Deserialization of ChassisID failed: ";
    const struct {
        const char* octets;
        std::string reason;
    } rows[] = {
        {"0407 04 020000000001", chassis + "TLV type 2 is not 1"},
        {"0201 04", chassis + "TLV length 1 is not in the range [2, 256]"},
        {"0301 07", chassis + "TLV length 257 is not in the range [2, 256]"},
        {"0202 00 01", chassis + "subtype 0 is reserved"},
        {"0206 04 0200000000", chassis + "a MAC address has 6 octets, not 5"},
        {"0207 04 020000000001 0207 04 020000000001",
         "Deserialization of PortID failed: TLV type 1 is not 2"},
        {"0207 04 020000000001 0402 08 01",
         "Deserialization of PortID failed: subtype 8 is reserved"},
    };
    for (const auto& [text, reason] : rows) {
        const auto malformed = from_hex(text);
        std::istringstream is(std::string(malformed.begin(), malformed.end()));
        SerializationContext ctx;
        DeviceID read = id;
        EXPECT_EQ(message_of([&] { return read.deserialize_impl(is, ctx), ""; }), reason);
        EXPECT_EQ(read, id);
    }
    for (std::size_t size = 0; size < octets.size(); ++size) {
        std::istringstream is(to_octets(id).substr(0, size));
        SerializationContext ctx;
        DeviceID read = longest;
        EXPECT_THROW(read.deserialize_impl(is, ctx), SerializationException) << size;
        EXPECT_EQ(read, longest);
    }
}

TEST(DeviceID, JsonNamesSubtypesAndValues) {
    const DeviceID id("macAddress=02:00:00:00:00:01 local=a\\xff");
    const std::string json =
        R"({"chassis_id_subtype":"macAddress","chassis_id":"02:00:00:00:00:01",)"
        R"("port_id_subtype":"local","port_id":"a\\xff"})";
    EXPECT_EQ(to_json(id), json);
    DeviceID read("local=x local=y");
    EXPECT_EQ(from_json(json, "", read), "");
    EXPECT_EQ(read, id);
    const auto refusal = [&](const std::string& from, const std::string& to) {
        std::string text = json;
        return from_json(text.replace(text.find(from), from.size(), to), "", read);
    };
    EXPECT_EQ(refusal("macAddress", "agentCircuitId"),
              R"(Deserialization of enum "chassis_id_subtype" failed, got "agentCircuitId")");
    EXPECT_EQ(refusal("02:00", "02:0g"),
              "Deserialization of DeviceID failed: '02:0g:00:00:00:01' is no valid MACAddress "
              "string");
    EXPECT_EQ(refusal("a\\\\xff", ""),
              "Deserialization of DeviceID failed: PortID: size 0 is not in the range [1, 255]");
    EXPECT_EQ(refusal("a\\\\xff", "a b"),
              "Deserialization of DeviceID failed: 'a b' is no valid PortID string");
    EXPECT_EQ(read, id);
    std::vector<DeviceID> list;
    EXPECT_EQ(from_json("{\"l\":" + to_json(std::vector{id, DeviceID()}) + '}', "l", list), "");
    EXPECT_EQ(list, (std::vector{id, DeviceID()}));
    EXPECT_EQ(DeviceID().to_string(), "macAddress=00:00:00:00:00:00 macAddress=00:00:00:00:00:00");
}

}  // namespace nuv::test
