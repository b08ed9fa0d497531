// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "nuv/export.hpp"
#include "nuv/json_integer.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/json_serialize_factory.hpp"
#include "nuv/scoped_json.hpp"
#include "nuv/serialization_context.hpp"
#include "nuv/serialization_exception.hpp"
#include "nuv/yajl_node.hpp"
#include "nuv/yajl_stream.hpp"

namespace nuv::serialization {

/// An enumeration with texts: `enum_to_string(value)` and `string_to_enum(text, out)` stand beside
/// it, the latter returning whether it knows the text.
template <typename T>
concept JSONTextEnum = std::is_enum_v<T> && requires(T value, const std::string& text) {
    { enum_to_string(value) } -> std::convertible_to<std::string_view>;
    { string_to_enum(text, value) } -> std::same_as<bool>;
};

/// A value whose JSON form is its text: `parse_string(text)` reads what `to_string()` writes and
/// returns whether it could, the value stays where it could not; TYPE_NAME is for messages.
template <typename T>
concept JSONText = requires(T value, const std::string& text) {
    { T::TYPE_NAME } -> std::convertible_to<std::string_view>;
    { value.to_string() } -> std::convertible_to<std::string>;
    { value.parse_string(text) } -> std::same_as<bool>;
};

}  // namespace nuv::serialization

namespace nuv::impl {

using serialization::JSONInteger;
using serialization::JSONSerializable;
using serialization::SerializationContext;
using serialization::SerializationException;
using serialization::YAJLNode;
using serialization::YAJLStream;

/// Throws "Serialization of `type` failed".
[[noreturn]] NUV_EXPORT void throw_json_write_failed(std::string_view type);
/// Throws "Deserialization of `type` "`key`" failed`reason`".
[[noreturn]] NUV_EXPORT void throw_json_read_failed(std::string_view type, const std::string& key,
                                                    std::string_view reason = {});
/// The same for a member of which `text` was read, which is none of its texts.
[[noreturn]] NUV_EXPORT void throw_json_text_unknown(std::string_view type, const std::string& key,
                                                     const std::string& text);
/// Throws what the exception at hand, from reading an object in an array, means for the array.
[[noreturn]] NUV_EXPORT void rethrow_json_element_failure();

NUV_EXPORT void write_json_object(YAJLStream& stream, SerializationContext& ctx,
                                  const JSONSerializable& value);
NUV_EXPORT void read_json_object(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                                 JSONSerializable& value);

/// A value that is one call of the stream and one of the node: the name it has in messages, and how
/// it is written and read.
template <typename T>
struct JSONPrimitive;

template <>
struct JSONPrimitive<std::nullptr_t> {
    static constexpr std::string_view NAME = "null";
    static bool write(YAJLStream& stream, std::nullptr_t) { return stream.write_null(); }
    static bool read(const YAJLNode& node, const std::string& key, std::nullptr_t&) {
        return node.get_null(key);
    }
};

template <>
struct JSONPrimitive<bool> {
    static constexpr std::string_view NAME = "bool";
    static bool write(YAJLStream& stream, bool value) { return stream.write_bool(value); }
    static bool read(const YAJLNode& node, const std::string& key, bool& value) {
        return node.get_bool(key, value);
    }
};

template <JSONInteger T>
struct JSONPrimitive<T> {
    static constexpr std::string_view NAME = std::array<std::string_view, 8>{
        "std::uint8_t", "std::uint16_t", "std::uint32_t", "std::uint64_t",
        "std::int8_t",  "std::int16_t",  "std::int32_t",  "std::int64_t",
    }[static_cast<std::size_t>(std::countr_zero(sizeof(T))) + (std::is_signed_v<T> ? 4 : 0)];
    static bool write(YAJLStream& stream, T value) { return stream.write_integer(value); }
    static bool read(const YAJLNode& node, const std::string& key, T& value) {
        return node.get_integer(key, value);
    }
};

template <>
struct JSONPrimitive<std::string> {
    static constexpr std::string_view NAME = "std::string";
    static bool write(YAJLStream& stream, std::string_view value) {
        return stream.write_string(value);
    }
    static bool read(const YAJLNode& node, const std::string& key, std::string& value) {
        return node.get_string(key, value);
    }
};

template <typename T>
void write_json_primitive(YAJLStream& stream, const auto& value) {
    if (!JSONPrimitive<T>::write(stream, value)) {
        throw_json_write_failed(JSONPrimitive<T>::NAME);
    }
}

}  // namespace nuv::impl

namespace nuv::serialization {

/// null, bool, integers of 8 to 64 bits, text. An integer is cut to the low bits that fit into T:
/// 300 read as std::uint8_t is 44, and no error.
template <typename T>
requires requires { impl::JSONPrimitive<T>::NAME; }
struct JSONSerializableType<T> {
    static void serialize(YAJLStream& stream, SerializationContext&, const T& value) {
        impl::write_json_primitive<T>(stream, value);
    }
    static void deserialize(YAJLNode& node, SerializationContext&, const std::string& key,
                            T& value) {
        if (!impl::JSONPrimitive<T>::read(node, key, value)) {
            impl::throw_json_read_failed(impl::JSONPrimitive<T>::NAME, key);
        }
    }
};

/// A string literal, written as a string up to its first NUL. There is nothing to read into.
template <std::size_t N>
struct JSONSerializableType<char[N]> {
    static void serialize(YAJLStream& stream, SerializationContext&, const char (&value)[N]) {
        const auto* end = std::find(value, value + N, '\0');
        impl::write_json_primitive<std::string>(stream, std::string_view(value, end));
    }
};

/// The text of an enumeration; a value without one is written as the text that says so.
template <JSONTextEnum T>
struct JSONSerializableType<T> {
    static void serialize(YAJLStream& stream, SerializationContext&, const T& value) {
        impl::write_json_primitive<std::string>(stream, std::string_view(enum_to_string(value)));
    }
    static void deserialize(YAJLNode& node, SerializationContext&, const std::string& key,
                            T& value) {
        std::string text;
        if (!node.get_string(key, text) || !string_to_enum(text, value)) {
            impl::throw_json_text_unknown("enum", key, text);
        }
    }
};

/// The text of a value; only what it reads is taken.
template <JSONText T>
struct JSONSerializableType<T> {
    static void serialize(YAJLStream& stream, SerializationContext&, const T& value) {
        if (!stream.write_string(value.to_string())) {
            impl::throw_json_write_failed(T::TYPE_NAME);
        }
    }
    static void deserialize(YAJLNode& node, SerializationContext&, const std::string& key,
                            T& value) {
        std::string text;
        if (!node.get_string(key, text) || !value.parse_string(text)) {
            impl::throw_json_text_unknown(T::TYPE_NAME, key, text);
        }
    }
};

/// One JSON object.
template <std::derived_from<JSONSerializable> T>
struct JSONSerializableType<T> {
    static void serialize(YAJLStream& stream, SerializationContext& ctx, const T& value) {
        impl::write_json_object(stream, ctx, value);
    }
    static void deserialize(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                            T& value) {
        impl::read_json_object(node, ctx, key, value);
    }
};

/// One JSON array of objects or of strings, in order. Whatever is wrong with an object is one
/// SerializationException, std::invalid_argument included; only that of a MAC address passes through.
template <typename T>
requires std::derived_from<T, JSONSerializable> || std::same_as<T, std::string>
struct JSONSerializableType<std::vector<T>> {
    static void serialize(YAJLStream& stream, SerializationContext& ctx,
                          const std::vector<T>& values) {
        constexpr const char* PREFIX = "Serialization of std::vector failed: ";
        const ScopedJSONArray array(stream, PREFIX);
        try {
            for (const T& value : values) {
                JSONSerializableType<T>::serialize(stream, ctx, value);
            }
        } catch (const SerializationException& inner) {
            throw SerializationException(std::string(PREFIX) + inner.what());
        }
    }

    static void deserialize(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                            std::vector<T>& values) {
        YAJLNode array;
        std::uint32_t size = 0;
        if (!node.get_array(key, array) || !array.get_array_size(size)) {
            if constexpr (OF_OBJECTS) {
                impl::throw_json_read_failed("array", key, ", no array with such name found");
            } else {
                impl::throw_json_read_failed("std::vector", key);
            }
        }
        // More than that only as elements turn out to be some.
        constexpr std::uint32_t MAX_RESERVED = 256;
        std::vector<T> fresh;
        fresh.reserve(std::min(size, MAX_RESERVED));
        YAJLNode element;
        for (std::uint32_t i = 0; array.get_array_element(i, element); ++i) {
            fresh.push_back(JSONSerializeFactory<T>::make_default(element, ctx, {}));
            read_element(element, ctx, fresh.back());
        }
        values = std::move(fresh);
    }

private:
    static constexpr bool OF_OBJECTS = std::derived_from<T, JSONSerializable>;

    static void read_element(YAJLNode& element, SerializationContext& ctx, T& value) try {
        JSONSerializableType<T>::deserialize(element, ctx, {}, value);
    } catch (...) {
        if constexpr (OF_OBJECTS) {
            impl::rethrow_json_element_failure();
        }
        throw;
    }
};

}  // namespace nuv::serialization
