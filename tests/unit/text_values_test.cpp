// SPDX-License-Identifier: Apache-2.0
// What all values with a text have in common: order, hash, stream output, reading, JSON.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "nuv/basic_version.hpp"
#include "nuv/device_id.hpp"
#include "nuv/id.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/tarvu_address.hpp"
#include "support/json_text.hpp"

namespace nuv::test {

namespace {

/// Texts of values in ascending order, texts of one value side by side in a list of their own; and
/// texts of none.
template <class T>
struct Samples;

template <>
struct Samples<MACAddress> {
    std::vector<std::vector<std::string>> ascending{
        {"00:00:00:00:00:FF"}, {"00:00:00:00:01:00"}, {"80:00:00:00:00:00"}};
    std::vector<std::string> none{"", "00:00:00:00:00:0"};
};

template <>
struct Samples<ID> {
    std::vector<std::vector<std::string>> ascending{{" "}, {"B"}, {"a"}, {"a "}, {"\xC3\xA9"}};
    std::vector<std::string> none{""};
};

template <>
struct Samples<BasicVersion> {
    std::vector<std::vector<std::string>> ascending{
        {"0", "0.0", "0.0.0.0"}, {"0.0.0.1"}, {"0.1"},  {"1", "1.0"}, {"1.0.9"},
        {"1.2", "1.2.0"},        {"1.2.0.1"}, {"1.10"}, {"2"},        {"65535.65535.65535.65535"},
    };
    std::vector<std::string> none{"",
                                  ".",
                                  "1.",
                                  ".1",
                                  "1..2",
                                  "1.2.3.4.5",
                                  "65536",
                                  "-1",
                                  "+1",
                                  " 1",
                                  "1 ",
                                  "1.a",
                                  "0x1",
                                  "1,2",
                                  "1.2.",
                                  "1.2.3.4.",
                                  "99999999999999999999"};
};

template <>
struct Samples<TarvuAddress> {
    std::vector<std::vector<std::string>> ascending{
        {"-"},
        {"Z_9.x"},
        {"agent"},
        {"agent@02:00:00:00:00:01"},
        {"agent@02:00:00:00:00:AA"},
        {"agenta"},
        {std::string(64, 'b')},
    };
    std::vector<std::string> none{"",
                                  "@02:00:00:00:00:01",
                                  "agent@",
                                  "agent@02:00:00:00:00:0",
                                  "agent@02:00:00:00:00:01@02:00:00:00:00:01",
                                  "a b",
                                  "a/b",
                                  "\xC3\xA9",
                                  std::string("a\0b", 3),
                                  std::string(65, 'b')};
};

template <>
struct Samples<ChassisID> {
    std::vector<std::vector<std::string>> ascending{
        {"chassisComponent=b"},           {"interfaceAlias=a"},
        {"macAddress=02:00:00:00:00:01"}, {"networkAddress=10.0.0.1"},
        {"networkAddress=fe80::1"},       {"interfaceName=wlan0"},
        {"interfaceName=wlan1"},          {"local=\\x00"},
    };
    std::vector<std::string> none{"", "local", "agentCircuitId=a"};
};

template <>
struct Samples<DeviceID> {
    std::vector<std::vector<std::string>> ascending{
        {"macAddress=02:00:00:00:00:01 macAddress=02:00:00:00:00:02"},
        {"macAddress=02:00:00:00:00:01 macAddress=02:00:00:00:00:03"},
        {"macAddress=02:00:00:00:00:02 macAddress=02:00:00:00:00:01"},
        {"interfaceName=a local=a"},
    };
    std::vector<std::string> none{
        "", " ", "local=a", "local=a ", " local=a", "local=a  local=b", "local=a local=b "};
};

template <class T>
class TextValue : public testing::Test {};
using Types = testing::Types<MACAddress, ID, BasicVersion, TarvuAddress, ChassisID, DeviceID>;

}  // namespace

TYPED_TEST_SUITE(TextValue, Types);

TYPED_TEST(TextValue, IsOrderedAndHashedAsItsTextsSay) {
    std::vector<std::pair<int, TypeParam>> values;
    int rank = 0;
    for (const auto& texts : Samples<TypeParam>().ascending) {
        for (const std::string& text : texts) {
            values.emplace_back(rank, TypeParam(text));
        }
        ++rank;
    }
    std::shuffle(values.begin(), values.end(), std::mt19937(3));
    for (const auto& [i, a] : values) {
        for (const auto& [j, b] : values) {
            EXPECT_EQ(a == b, i == j) << a << ' ' << b;
            EXPECT_EQ(a != b, i != j) << a << ' ' << b;
            EXPECT_EQ(a < b, i < j) << a << ' ' << b;
            EXPECT_EQ(a <= b, i <= j) << a << ' ' << b;
            EXPECT_EQ(a > b, i > j) << a << ' ' << b;
            EXPECT_EQ(a >= b, i >= j) << a << ' ' << b;
            EXPECT_EQ(std::hash<TypeParam>()(a) == std::hash<TypeParam>()(b), i == j);
        }
    }
}

TYPED_TEST(TextValue, IsReadFromItsTextInEveryWayAndFromNoOther) {
    const Samples<TypeParam> samples;
    const TypeParam before(samples.ascending.back().front());
    TypeParam value = before;
    for (const auto& texts : samples.ascending) {
        for (const std::string& text : texts) {
            EXPECT_TRUE(value.parse_string(text));
            std::ostringstream os;
            os << value;
            EXPECT_EQ(os.str(), text);
            EXPECT_EQ(value.to_string(), text);
            value = before;
            const std::string json = to_json(TypeParam(text));
            if constexpr (serialization::JSONText<TypeParam>) {
                EXPECT_EQ(json.front(), '"') << json;
            }
            EXPECT_EQ(from_json("{\"m\":" + json + '}', "m", value), "");
            EXPECT_EQ(value, TypeParam(text));
        }
    }
    value = before;
    for (const std::string& text : samples.none) {
        EXPECT_FALSE(value.parse_string(text)) << text;
        if constexpr (!std::is_same_v<TypeParam, MACAddress>) {  // which promises less
            EXPECT_EQ(value, before) << text;
        }
        EXPECT_THROW(TypeParam{text}, std::invalid_argument) << text;
    }
}

TEST(TextValue, SaysWhatIsWrongWithItsJson) {
    ID id("i");
    EXPECT_EQ(to_json(id, 2), "Serialization of ID failed");
    EXPECT_EQ(from_json(R"({"m":""})", "m", id), R"(Deserialization of ID "m" failed, got "")");
    BasicVersion version;
    EXPECT_EQ(from_json(R"({"m":"1.x"})", "m", version),
              R"(Deserialization of BasicVersion "m" failed, got "1.x")");
    EXPECT_EQ(from_json(R"({"m":1})", "m", version),
              R"(Deserialization of BasicVersion "m" failed, got "")");
    EXPECT_EQ(version.to_string(), "0");
    EXPECT_EQ(message_of<std::invalid_argument>([] { return TarvuAddress("a b").to_string(); }),
              "'a b' is no valid TarvuAddress string");
    EXPECT_EQ(message_of<std::invalid_argument>([] { return DeviceID("local=a").to_string(); }),
              "'local=a' is no valid DeviceID string");
}

TEST(BasicVersion, IsMadeOfOneToFourNumbers) {
    EXPECT_EQ((BasicVersion{1, 2, 3}).to_string(), "1.2.3");
    EXPECT_EQ(BasicVersion("01.002").to_string(), "1.2");
    EXPECT_EQ((BasicVersion{7, 8})[1], 8);
    EXPECT_EQ((BasicVersion{7, 8})[9], 0);
    EXPECT_EQ(message_of<std::invalid_argument>([] {
                  return (BasicVersion{1, 2, 3, 4, 5}).to_string();
              }),
              "A BasicVersion has one to four numbers, not 5");
    EXPECT_THROW(BasicVersion(std::initializer_list<std::uint16_t>{}), std::invalid_argument);
}

TEST(TarvuAddress, IsMadeOfANameAndADevice) {
    const MACAddress device("02:00:00:00:00:0a");
    const TarvuAddress address("agent", device);
    EXPECT_EQ(address.to_string(), "agent@02:00:00:00:00:0A");
    EXPECT_EQ(address, TarvuAddress("agent@02:00:00:00:00:0a"));
    EXPECT_EQ(address.get_name() + address.get_device().value().to_string(),
              "agent02:00:00:00:00:0A");
    EXPECT_EQ(TarvuAddress("agent", std::nullopt), TarvuAddress("agent"));
    EXPECT_THROW(TarvuAddress("agent@02:00:00:00:00:0A", device), std::invalid_argument);
}

}  // namespace nuv::test
