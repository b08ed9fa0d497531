// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_serializable_type.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "nuv/json_serializer.hpp"
#include "support/json_text.hpp"

using namespace nuv::serialization;
using nuv::test::json_of;
using nuv::test::message_of;
using nuv::test::read_failure;
using nuv::test::read_json;
using nuv::test::write_failure;
using nuv::test::write_json;

namespace {

enum class Colour : std::uint8_t { RED, GREEN };
std::string enum_to_string(Colour colour) { return colour == Colour::RED ? "RED" : "INVALID"; }
bool string_to_enum(const std::string& text, Colour& out) {
    return text == "RED" && (out = Colour::RED, true);
}

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

Point point(int x, const char* name) {
    Point made;
    made.x = x;
    made.name = name;
    return made;
}

template <typename T>
std::string text_of(const T& value) {
    return json_of([&](YAJLStream& stream) { write_json(stream, value); });
}

template <typename T>
void expect_primitive(const std::string& name, const T& value, const std::string& text) {
    T read{};
    EXPECT_EQ(text_of(value), text);
    read_json("{\"k\":" + text + "}", "k", read);
    EXPECT_EQ(read, value) << name;
    EXPECT_EQ(write_failure(value), "Serialization of " + name + " failed");
    EXPECT_EQ(read_failure<T>("{\"k\":{}}", "k"), "Deserialization of " + name + " \"k\" failed");
    EXPECT_EQ(read_failure<T>("{}", "q\"k"), "Deserialization of " + name + " \"q\\\"k\" failed");
}

template <typename T>
void expect_integer(const std::string& name, const std::string& lowest,
                    const std::string& highest) {
    expect_primitive(name, std::numeric_limits<T>::min(), lowest);
    expect_primitive(name, std::numeric_limits<T>::max(), highest);
}

}  // namespace

TEST(JSONSerializableType, PrimitivesRoundTripAndFailByName) {
    expect_primitive("null", nullptr, "null");
    expect_primitive("bool", true, "true");
    expect_primitive<std::string>("std::string", "a\xC3\xA4\"", "\"a\xC3\xA4\\\"\"");
    expect_integer<std::uint8_t>("std::uint8_t", "0", "255");
    expect_integer<std::uint16_t>("std::uint16_t", "0", "65535");
    expect_integer<std::uint32_t>("std::uint32_t", "0", "4294967295");
    expect_integer<std::uint64_t>("std::uint64_t", "0", "-1");
    expect_integer<std::int8_t>("std::int8_t", "-128", "127");
    expect_integer<std::int16_t>("std::int16_t", "-32768", "32767");
    expect_integer<std::int32_t>("std::int32_t", "-2147483648", "2147483647");
    expect_integer<std::int64_t>("std::int64_t", "-9223372036854775808", "9223372036854775807");
    // One of the two is another type of the same size as std::int64_t or std::int32_t.
    expect_primitive<long long>("std::int64_t", -5, "-5");
    expect_primitive<long>(sizeof(long) == 8 ? "std::int64_t" : "std::int32_t", -5, "-5");
}

TEST(JSONSerializableType, IntegersAreCutWithoutAnError) {
    std::uint8_t byte = 0;
    read_json("{\"a\":300}", "a", byte);
    EXPECT_EQ(byte, 44);
    EXPECT_EQ(read_failure<std::uint8_t>("1e2", ""), "Deserialization of std::uint8_t \"\" failed");
}

TEST(JSONSerializableType, CharacterArraysAreStringsUpToTheirNul) {
    EXPECT_EQ(text_of("text"), "\"text\"");
    EXPECT_EQ(text_of("te\0xt"), "\"te\"");
    EXPECT_EQ(text_of<char[2]>({'n', 'o'}), "\"no\"");
    EXPECT_EQ(write_failure("text"), "Serialization of std::string failed");
}

TEST(JSONSerializableType, EnumerationsAreTheirTexts) {
    Colour colour = Colour::GREEN;
    EXPECT_EQ(text_of(Colour::RED), "\"RED\"");
    EXPECT_EQ(text_of(Colour::GREEN), "\"INVALID\"");
    EXPECT_EQ(write_failure(Colour::RED), "Serialization of std::string failed");
    EXPECT_EQ(message_of([&] { read_json("{\"c\":\"BL\\\"UE\"}", "c", colour); }),
              "Deserialization of enum \"c\" failed, got \"BL\\\"UE\"");
    EXPECT_EQ(message_of([&] { read_json("{\"c\":1}", "c", colour); }),
              "Deserialization of enum \"c\" failed, got \"\"");
    EXPECT_EQ(colour, Colour::GREEN);
    read_json("\"RED\"", "", colour);
    EXPECT_EQ(colour, Colour::RED);
}

TEST(JSONSerializableType, ObjectsAreReadByNameInAnyOrder) {
    Point read;
    EXPECT_EQ(text_of(point(3, "p")), "{\"x\":3,\"name\":\"p\"}");
    read_json("{\"o\":{\"unknown\":[],\"name\":\"p\",\"x\":3}}", "o", read);
    EXPECT_EQ(text_of(read), "{\"x\":3,\"name\":\"p\"}");
    read_json("{\"name\":\"q\",\"x\":4}", "", read);
    EXPECT_EQ(text_of(read), "{\"x\":4,\"name\":\"q\"}");
    EXPECT_EQ(read_failure<Point>("{\"o\":[]}", "o"),
              "Deserialization of object \"o\" failed, no object with such name found");
}

TEST(JSONSerializableType, ListsKeepTheirOrder) {
    const std::vector<Point> points{point(1, "a"), point(2, "b")};
    const std::vector<std::string> words{"x", "y"};
    std::vector<Point> read_points(1);
    std::vector<std::string> read_words(3);
    const std::string points_text = "[{\"x\":1,\"name\":\"a\"},{\"x\":2,\"name\":\"b\"}]";
    EXPECT_EQ(text_of(points), points_text);
    EXPECT_EQ(text_of(words), "[\"x\",\"y\"]");
    read_json("{\"l\":" + points_text + "}", "l", read_points);
    EXPECT_EQ(text_of(read_points), points_text);
    read_json("[\"x\",\"y\"]", "", read_words);
    EXPECT_EQ(read_words, words);
}

TEST(JSONSerializableType, AListThatCannotBeReadLeavesTheTarget) {
    std::vector<Point> points(2);
    std::vector<std::string> words(2);
    struct {
        const char* text;
        const char* points_message;
        const char* words_message;
    } const rows[] = {
        {"{\"l\":{}}", "Deserialization of array \"l\" failed, no array with such name found",
         "Deserialization of std::vector \"l\" failed"},
        {"{\"l\":[1]}",
         "Deserialization of object inside array failed, got:\n"
         "Deserialization of std::int32_t \"x\" failed",
         "Deserialization of std::string \"\" failed"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(message_of([&] { read_json(row.text, "l", points); }), row.points_message);
        EXPECT_EQ(message_of([&] { read_json(row.text, "l", words); }), row.words_message);
    }
    EXPECT_EQ(points.size() + words.size(), 4U);
}

TEST(JSONSerializableType, EveryPlaceWhereTheStreamIsFullHasItsMessage) {
    const std::string object = "Serialization of JSONSerializable object failed: ";
    const std::string list = "Serialization of std::vector failed: ";
    const std::string expected[] = {
        list + "Could not open array",                  // [
        list + object + "Could not open object",        // {
        list + "Serialization of CharArray failed",     // "x"
        list + "Serialization of CharArray failed",     //
        list + "Serialization of CharArray failed",     //
        list + "Serialization of std::int32_t failed",  // :
        list + "Serialization of std::int32_t failed",  // 1
        list + "Serialization of CharArray failed",     // ,
    };
    const std::vector<Point> points{point(1, "")};
    for (std::size_t room = 0; room < std::size(expected); ++room) {
        EXPECT_EQ(write_failure(points, room), expected[room]) << room;
    }
    const std::string text = text_of(points);
    EXPECT_EQ(write_failure(points, text.size() - 2), list + object + "Could not close object");
    EXPECT_EQ(write_failure(points, text.size() - 1), list + "Could not close array");
    EXPECT_EQ(write_failure(points, text.size()), "");
}
