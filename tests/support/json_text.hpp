// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sstream>
#include <streambuf>
#include <string>

#include "nuv/json_serializable_type.hpp"

namespace nuv::test {

using serialization::JSONSerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;
using serialization::YAJLNode;
using serialization::YAJLStream;

/// A sink with room for some bytes; then it refuses, or throws.
struct FullBuffer : std::streambuf {
    explicit FullBuffer(std::size_t size, bool throwing = false) : room(size), throws(throwing) {}
    int_type overflow(int_type byte) override {
        if (text.size() == room) {
            return throws ? throw SerializationException("full") : traits_type::eof();
        }
        text += traits_type::to_char_type(byte);
        return byte;
    }
    int sync() override { return ++syncs, 0; }

    std::size_t room;
    bool throws;
    std::string text;
    int syncs = 0;
};

/// What the exception says that `function` throws; else what it returns.
template <typename Exception = SerializationException>
std::string message_of(auto&& function) {
    try {
        return function();
    } catch (const Exception& exception) {
        return exception.what();
    }
}

/// The compact JSON that `function` writes where there is room for `room` bytes, or what it throws.
std::string written(auto&& function, std::size_t room = 1000) {
    return message_of([&] {
        FullBuffer buffer(room);
        std::ostream os(&buffer);
        YAJLStream stream(os, YAJLStream::YAJLIndentation::COMPACT);
        return function(stream), buffer.text;
    });
}

template <typename T>
std::string to_json(const T& value, std::size_t room = 1000) {
    SerializationContext ctx;
    return written([&](auto& s) { JSONSerializableType<T>::serialize(s, ctx, value); }, room);
}

inline YAJLNode parse(const std::string& text) {
    std::istringstream is(text);
    return YAJLNode(is);
}

/// Reads the member `key` of the document `text` into `value`; returns "" or what it throws.
template <typename T>
std::string from_json(const std::string& text, const std::string& key, T& value) {
    YAJLNode node = parse(text);
    SerializationContext ctx;
    return message_of(
        [&] { return JSONSerializableType<T>::deserialize(node, ctx, key, value), ""; });
}

}  // namespace nuv::test
