// SPDX-License-Identifier: Apache-2.0
// JSON of a radio with eight channels, to and from std::string: this library beside YAJL called by
// hand, which is the floor.
#include <benchmark/benchmark.h>
#include <yajl/yajl_gen.h>
#include <yajl/yajl_tree.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "nuv/json_serializer.hpp"

namespace {

using nuv::serialization::JSONSerializable;
using nuv::serialization::JSONSerializableType;
using nuv::serialization::JSONSerializer;
using nuv::serialization::SerializationContext;
using nuv::serialization::YAJLNode;
using nuv::serialization::YAJLStream;

struct Channel : JSONSerializable {
    std::int32_t primary_frequency = 5180000;
    std::uint8_t utilisation = 17;
    std::int8_t noise = -95;
    bool operating = true;
    std::string width = "80 MHz";

    void serialize_impl(YAJLStream& stream, SerializationContext& ctx) const override {
        JSONSerializer::serialize_impl(stream, ctx, "primary_frequency", primary_frequency,
                                       "utilisation", utilisation, "noise", noise, "operating",
                                       operating, "width", width);
    }
    void deserialize_impl(YAJLNode& node, SerializationContext& ctx) override {
        JSONSerializer::deserialize(node, ctx, "primary_frequency", primary_frequency);
        JSONSerializer::deserialize(node, ctx, "utilisation", utilisation);
        JSONSerializer::deserialize(node, ctx, "noise", noise);
        JSONSerializer::deserialize(node, ctx, "operating", operating);
        JSONSerializer::deserialize(node, ctx, "width", width);
    }
};

struct Radio : JSONSerializable {
    std::string name = "wifi0";
    std::vector<Channel> channels{8};

    void serialize_impl(YAJLStream& stream, SerializationContext& ctx) const override {
        JSONSerializer::serialize_impl(stream, ctx, "name", name, "channels", channels);
    }
    void deserialize_impl(YAJLNode& node, SerializationContext& ctx) override {
        JSONSerializer::deserialize(node, ctx, "name", name);
        JSONSerializer::deserialize(node, ctx, "channels", channels);
    }
};

std::string write(const Radio& radio) {
    std::ostringstream os;
    YAJLStream stream(os, YAJLStream::YAJLIndentation::COMPACT);
    SerializationContext ctx;
    JSONSerializableType<Radio>::serialize(stream, ctx, radio);
    return std::move(os).str();
}

Radio read(const std::string& text) {
    std::istringstream is(text);
    YAJLNode node(is);
    SerializationContext ctx;
    Radio radio;
    JSONSerializableType<Radio>::deserialize(node, ctx, {}, radio);
    return radio;
}

bool yajl_write_string(yajl_gen generator, const std::string& text) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    return yajl_gen_string(generator, bytes, text.size()) == yajl_gen_status_ok;
}

template <std::size_t N>
bool yajl_write_key(yajl_gen generator, const char (&key)[N]) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(key);
    return yajl_gen_string(generator, bytes, N - 1) == yajl_gen_status_ok;
}

std::string yajl_write(const Radio& radio) {
    const yajl_gen generator = yajl_gen_alloc(nullptr);
    yajl_gen_config(generator, yajl_gen_validate_utf8, 1);
    const auto ok = [](yajl_gen_status status) { return status == yajl_gen_status_ok; };
    bool written = ok(yajl_gen_map_open(generator)) && yajl_write_key(generator, "name") &&
                   yajl_write_string(generator, radio.name) &&
                   yajl_write_key(generator, "channels") && ok(yajl_gen_array_open(generator));
    for (const Channel& channel : radio.channels) {
        written = written && ok(yajl_gen_map_open(generator)) &&
                  yajl_write_key(generator, "primary_frequency") &&
                  ok(yajl_gen_integer(generator, channel.primary_frequency)) &&
                  yajl_write_key(generator, "utilisation") &&
                  ok(yajl_gen_integer(generator, channel.utilisation)) &&
                  yajl_write_key(generator, "noise") &&
                  ok(yajl_gen_integer(generator, channel.noise)) &&
                  yajl_write_key(generator, "operating") &&
                  ok(yajl_gen_bool(generator, channel.operating ? 1 : 0)) &&
                  yajl_write_key(generator, "width") &&
                  yajl_write_string(generator, channel.width) && ok(yajl_gen_map_close(generator));
    }
    written = written && ok(yajl_gen_array_close(generator)) && ok(yajl_gen_map_close(generator));
    const unsigned char* text = nullptr;
    std::size_t size = 0;
    if (!written || yajl_gen_get_buf(generator, &text, &size) != yajl_gen_status_ok) {
        std::abort();
    }
    std::string document(reinterpret_cast<const char*>(text), size);
    yajl_gen_free(generator);
    return document;
}

yajl_val yajl_member(yajl_val node, const char* key, yajl_type type) {
    std::array<const char*, 2> path{key, nullptr};
    const yajl_val member = yajl_tree_get(node, path.data(), type);
    if (member == nullptr) {
        std::abort();
    }
    return member;
}

Radio yajl_read(const std::string& text) {
    std::array<char, 1024> error{};
    const yajl_val root = yajl_tree_parse(text.c_str(), error.data(), error.size());
    Radio radio;
    radio.name = YAJL_GET_STRING(yajl_member(root, "name", yajl_t_string));
    const auto* channels = YAJL_GET_ARRAY(yajl_member(root, "channels", yajl_t_array));
    radio.channels = std::vector<Channel>(channels->len);
    for (std::size_t i = 0; i < channels->len; ++i) {
        const yajl_val node = channels->values[i];
        Channel& channel = radio.channels[i];
        const auto integer = [node](const char* key) {
            return YAJL_GET_INTEGER(yajl_member(node, key, yajl_t_number));
        };
        channel.primary_frequency = static_cast<std::int32_t>(integer("primary_frequency"));
        channel.utilisation = static_cast<std::uint8_t>(integer("utilisation"));
        channel.noise = static_cast<std::int8_t>(integer("noise"));
        channel.operating = YAJL_IS_TRUE(yajl_member(node, "operating", yajl_t_any));
        channel.width = YAJL_GET_STRING(yajl_member(node, "width", yajl_t_string));
    }
    yajl_tree_free(root);
    return radio;
}

template <auto write_radio>
void json_write(benchmark::State& state) {
    const Radio radio;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(write_radio(radio));
    }
}

template <auto read_radio>
void json_read(benchmark::State& state) {
    const std::string text = write(Radio());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(read_radio(text));
    }
}

BENCHMARK(json_write<write>)->Name("json_write/nuv");
BENCHMARK(json_write<yajl_write>)->Name("json_write/yajl");
BENCHMARK(json_read<read>)->Name("json_read/nuv");
BENCHMARK(json_read<yajl_read>)->Name("json_read/yajl");

}  // namespace
