// SPDX-License-Identifier: Apache-2.0
// What every type with a JSON form makes of documents.
#include "nuv/addresses.hpp"
#include "nuv/channels.hpp"
#include "nuv/json_serializer.hpp"
#include "tests/support/foreign_locale.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::test {
namespace {

using serialization::JSONSerializer;

/// An object of a program.
struct Point : serialization::JSONSerializable {
    int x = 0;
    std::string name;
    void serialize_impl(YAJLStream& stream, SerializationContext& ctx) const override {
        JSONSerializer::serialize_impl(stream, ctx, "x", x, std::string("name"), name);
    }
    void deserialize_impl(YAJLNode& node, SerializationContext& ctx) override {
        JSONSerializer::deserialize(node, ctx, "x", x);
        JSONSerializer::deserialize(node, ctx, "name", name);
    }
    bool operator==(const Point& other) const { return x == other.x && name == other.name; }
};

/// Of a list of which a MAC address can be wrong, or the memory too small.
struct Station : serialization::JSONSerializable {
    MACAddress mac;
    void serialize_impl(YAJLStream& stream, SerializationContext& ctx) const override {
        JSONSerializer::serialize_impl(stream, ctx);
    }
    void deserialize_impl(YAJLNode& node, SerializationContext& ctx) override {
        if (node.probe_name("huge")) {
            throw std::bad_alloc();
        }
        JSONSerializer::deserialize(node, ctx, "mac", mac);
    }
    bool operator==(const Station& other) const { return mac == other.mac; }
};

/// The owner of an IP address of either version.
struct Host : serialization::JSONSerializable {
    std::shared_ptr<IPAddress> address = std::make_shared<IPv4Address>();
    void serialize_impl(YAJLStream& stream, SerializationContext& ctx) const override {
        serialize_ip_address(stream, ctx, *address);
    }
    void deserialize_impl(YAJLNode& node, SerializationContext& ctx) override {
        address = deserialize_ip_address(node, ctx);
    }
    bool operator==(const Host& other) const { return *address == *other.address; }
};

using Outcome = std::function<std::string(const std::string& what, const std::string& json)>;

/// Reads into a copy of `before`, which stays as it is when that fails.
template <class T>
Outcome outcome(const T& before) {
    return [before](const std::string& what, const std::string& json) {
        const ForeignLocale foreign;
        T value = before;
        std::string failure;
        try {
            failure = from_json(json.empty() ? "{}" : "{\"v\":" + json + "}", "v", value);
        } catch (const std::invalid_argument& error) {
            failure = std::string("invalid argument: ") + error.what();
        }
        EXPECT_TRUE(failure.empty() || value == before) << "changed";
        if constexpr (requires { value.to_string(); }) {
            if (what == "text" && failure.empty()) {
                std::ostringstream os;
                os << std::hex << std::setfill('*') << std::setw(999) << value;
                EXPECT_TRUE(os.width() == 999 && os.str() == value.to_string());
                return os.str();
            }
        }
        return !failure.empty()     ? failure
               : what == "refusals" ? refusals([&](auto& s) { write_json(s, value); })
                                    : to_json(value);
    };
}

TEST(JSON, IsReadAndWrittenAsListed) {
    const std::map<std::string, Outcome> types{
        {"null", outcome(nullptr)},
        {"bool", outcome(false)},
        {"std::string", outcome(std::string("before"))},
        {"strings", outcome(std::vector<std::string>{"before"})},
        {"std::uint8_t", outcome(std::uint8_t{77})},
        {"std::uint16_t", outcome(std::uint16_t{77})},
        {"std::uint32_t", outcome(std::uint32_t{77})},
        {"std::uint64_t", outcome(std::uint64_t{77})},
        {"std::int8_t", outcome(std::int8_t{77})},
        {"std::int16_t", outcome(std::int16_t{77})},
        {"std::int32_t", outcome(std::int32_t{77})},
        {"std::int64_t", outcome(std::int64_t{77})},
        {"point", outcome(Point())},
        {"points", outcome(std::vector<Point>(3))},
        {"stations", outcome(std::vector<Station>(1))},
        {"prefixes", outcome(std::vector<PrefixedIPAddress>())},
        {"IPAddress", outcome(Host())},
        {"DataRate", outcome(DataRate{77})},
        {"ChannelWidth", outcome(ChannelWidth::HT40)},
        {"MACAddress", outcome(MACAddress({1, 2, 3, 4, 5, 6}))},
        {"ID", outcome(ID("before"))},
        {"BasicVersion", outcome(BasicVersion{7})},
        {"TarvuAddress", outcome(TarvuAddress("before"))},
        {"NID", outcome(plc::NID({9, 9, 9, 9, 9, 9, 9}))},
        {"DeviceID", outcome(DeviceID("local=x local=y"))},
        {"PrefixedIPAddress", outcome(PrefixedIPAddress::guess_version_and_parse("::/1"))},
        {"ChannelEntry", outcome(ChannelEntry())},
        {"ChannelInfo", outcome(ChannelInfo())},
        {"ChannelList", outcome(ChannelList())},
        {"NSSTable", outcome(NSSTable())},
    };
    for (const auto& [call, expected] : listed_cases("json.tsv")) {
        SCOPED_TRACE(call);
        std::istringstream is(call);
        std::string type;
        std::string what;
        std::string json;
        std::getline(is >> type >> what >> std::ws, json);
        EXPECT_EQ(types.at(type)(what, json), expected);
    }
}

TEST(JSON, KeysAreQuotedAndIntegersGoBySize) {
    bool truth = false;
    EXPECT_EQ(from_json("{}", "\"", truth), R"(Deserialization of bool "\"" failed)");
    // One of the two is no fixed-width type, another one on each machine.
    long number = 0;
    EXPECT_EQ(from_json("-5", "", number), "");
    EXPECT_EQ(to_json(number) + to_json(-5LL), "-5-5");
    EXPECT_EQ(to_json(number, 0), sizeof number == 8 ? "Serialization of std::int64_t failed"
                                                     : "Serialization of std::int32_t failed");
    EXPECT_EQ(to_json(-5LL, 0), "Serialization of std::int64_t failed");
    EXPECT_EQ(to_json(ChannelWidth{9}), "\"INVALID CHANNEL WIDTH 9\"");
}

TEST(JSON, NoMemoryForAnObjectOfAListIsNoFaultOfTheText) {
    std::vector<Station> stations;
    EXPECT_THROW(from_json(R"([{"huge":1}])", "", stations), std::bad_alloc);
}

TEST(JSON, CharacterArraysAreStringsUpToTheirNul) {
    EXPECT_EQ(to_json("te\0xt") + to_json<char[2]>({'n', 'o'}), "\"te\"\"no\"");
    EXPECT_EQ(to_json("text", 0), "Serialization of std::string failed");
}

}  // namespace
}  // namespace nuv::test
