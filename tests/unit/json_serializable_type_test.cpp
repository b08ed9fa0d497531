// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_serializable_type.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "nuv/channel_types.hpp"
#include "nuv/json_serializer.hpp"
#include "support/json_text.hpp"

namespace nuv::test {

using serialization::JSONSerializable;
using serialization::JSONSerializer;

namespace {

struct Point : JSONSerializable {
    int x = 0;
    std::string name;
    void serialize_impl(YAJLStream& stream, SerializationContext& ctx) const override {
        JSONSerializer::serialize_impl(stream, ctx, "x", x, std::string("name"), name);
    }
    void deserialize_impl(YAJLNode& node, SerializationContext& ctx) override {
        JSONSerializer::deserialize(node, ctx, "x", x);
        JSONSerializer::deserialize(node, ctx, "name", name);
    }
};

template <typename T>
void expect_primitive(const std::string& name, const std::string& text, const T& value) {
    T read{};
    EXPECT_EQ(to_json(value), text);
    EXPECT_EQ(to_json(value, 0), "Serialization of " + name + " failed");
    EXPECT_EQ(from_json("{\"k\":" + text + "}", "k", read), "");
    EXPECT_EQ(from_json("{\"k\":{}}", "k", read), "Deserialization of " + name + " \"k\" failed");
    EXPECT_EQ(from_json("{}", "\"", read), "Deserialization of " + name + " \"\\\"\" failed");
    EXPECT_EQ(read, value) << name;
}

template <typename T>
void expect_integer(const std::string& name, const std::string& lowest,
                    const std::string& highest) {
    expect_primitive(name, lowest, std::numeric_limits<T>::min());
    expect_primitive(name, highest, std::numeric_limits<T>::max());
}

}  // namespace

TEST(JSONSerializableType, PrimitivesRoundTripAndFailByName) {
    expect_primitive("null", "null", nullptr);
    expect_primitive("bool", "true", true);
    expect_primitive<std::string>("std::string", "\"a\xC3\xA4\\\"\"", "a\xC3\xA4\"");
    expect_integer<std::uint8_t>("std::uint8_t", "0", "255");
    expect_integer<std::uint16_t>("std::uint16_t", "0", "65535");
    expect_integer<std::uint32_t>("std::uint32_t", "0", "4294967295");
    expect_integer<std::uint64_t>("std::uint64_t", "0", "-1");
    expect_integer<std::int8_t>("std::int8_t", "-128", "127");
    expect_integer<std::int16_t>("std::int16_t", "-32768", "32767");
    expect_integer<std::int32_t>("std::int32_t", "-2147483648", "2147483647");
    expect_integer<std::int64_t>("std::int64_t", "-9223372036854775808", "9223372036854775807");
    std::uint8_t byte = 0;  // what does not fit is cut, and no error
    EXPECT_EQ(from_json("300", "", byte), "");
    EXPECT_EQ(byte, 44);
    // One of the two is no fixed-width type, another one on each machine.
    expect_primitive<long long>("std::int64_t", "-5", -5);
    expect_primitive<long>(sizeof(long) == 8 ? "std::int64_t" : "std::int32_t", "-5", -5);
}

TEST(JSONSerializableType, CharacterArraysAreStringsUpToTheirNul) {
    EXPECT_EQ(to_json("te\0xt") + to_json<char[2]>({'n', 'o'}), "\"te\"\"no\"");
    EXPECT_EQ(to_json("text", 0), "Serialization of std::string failed");
}

TEST(JSONSerializableType, EnumerationsAreTheirTexts) {
    auto width = ChannelWidth::HT40;
    EXPECT_EQ(to_json(width) + to_json(ChannelWidth{9}), "\"40 MHz\"\"INVALID CHANNEL WIDTH 9\"");
    EXPECT_EQ(to_json(width, 0), "Serialization of std::string failed");
    EXPECT_EQ(from_json("1", "", width), "Deserialization of enum \"\" failed, got \"\"");
    EXPECT_EQ(from_json("{\"w\":\"\\\"\"}", "w", width),
              "Deserialization of enum \"w\" failed, got \"\\\"\"");
    EXPECT_EQ(width, ChannelWidth::HT40);
    EXPECT_EQ(from_json("\"80 MHz\"", "", width), "");
    EXPECT_EQ(width, ChannelWidth::HT80);
}

TEST(JSONSerializableType, ObjectsAreReadByNameInAnyOrder) {
    Point p;
    EXPECT_EQ(from_json("{\"o\":{\"other\":[],\"name\":\"p\",\"x\":3}}", "o", p), "");
    EXPECT_EQ(to_json(p), "{\"x\":3,\"name\":\"p\"}");
    EXPECT_EQ(from_json("{\"o\":[]}", "o", p),
              "Deserialization of object \"o\" failed, no object with such name found");
}

TEST(JSONSerializableType, ListsKeepTheirOrderAndStayWhenTheyCannotBeRead) {
    std::vector<Point> points(3);
    std::vector<std::string> words(3);
    const std::string text = "[{\"x\":1,\"name\":\"a\"},{\"x\":2,\"name\":\"b\"}]";
    EXPECT_EQ(from_json(text, "", points) + from_json("{\"l\":[\"x\",\"y\"]}", "l", words), "");
    EXPECT_EQ(from_json("{\"l\":{}}", "l", points),
              "Deserialization of array \"l\" failed, no array with such name found");
    EXPECT_EQ(from_json("{\"l\":{}}", "l", words), "Deserialization of std::vector \"l\" failed");
    EXPECT_EQ(from_json("[{}]", "", points),
              "Deserialization of object inside array failed, got:\n"
              "Deserialization of std::int32_t \"x\" failed");
    EXPECT_EQ(from_json("[1]", "", words), "Deserialization of std::string \"\" failed");
    EXPECT_EQ(to_json(points) + to_json(words), text + "[\"x\",\"y\"]");
}

TEST(JSONSerializableType, EveryPlaceWhereTheStreamIsFullHasItsMessage) {
    const std::string list = "Serialization of std::vector failed: ";
    const std::string object = list + "Serialization of JSONSerializable object failed: ";
    const std::string key = list + "Serialization of CharArray failed";
    const std::string number = list + "Serialization of std::int32_t failed";
    const std::string expected[] = {list + "Could not open array",
                                    object + "Could not open object",
                                    key,
                                    key,
                                    key,
                                    number,
                                    number,
                                    key,
                                    object + "Could not close object",
                                    list + "Could not close array",
                                    "[{\"x\":0,\"name\":\"\"}]"};
    const std::size_t rooms[] = {0, 1, 2, 3, 4, 5, 6, 7, 17, 18, 19};
    for (std::size_t i = 0; i < std::size(rooms); ++i) {
        EXPECT_EQ(to_json(std::vector<Point>(1), rooms[i]), expected[i]) << i;
    }
}

}  // namespace nuv::test
