// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

#include "nuv/json_serializable_type.hpp"

namespace nuv::test {

/// A sink with room for some bytes; then it refuses, or throws.
struct FullBuffer : std::streambuf {
    explicit FullBuffer(std::size_t size, bool throwing = false) : room(size), throws(throwing) {}
    int_type overflow(int_type byte) override {
        if (text.size() == room) {
            return throws ? throw std::runtime_error("full") : traits_type::eof();
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
template <typename Exception = serialization::SerializationException>
std::string message_of(auto&& function) {
    try {
        return function();
    } catch (const Exception& exception) {
        return exception.what();
    }
}

/// The compact JSON that `function` writes to the stream it is given, in which there is room for
/// `room` bytes; what it throws is told instead.
template <typename Exception = serialization::SerializationException>
std::string written(auto&& function, std::size_t room = 100'000) {
    return message_of<Exception>([&] {
        FullBuffer buffer(room);
        std::ostream os(&buffer);
        serialization::YAJLStream stream(os, serialization::YAJLStream::YAJLIndentation::COMPACT);
        return function(stream), buffer.text;
    });
}

template <typename T>
std::string to_json(const T& value, std::size_t room = 100'000) {
    return written(
        [&](serialization::YAJLStream& stream) {
            serialization::SerializationContext ctx;
            serialization::JSONSerializableType<T>::serialize(stream, ctx, value);
        },
        room);
}

inline serialization::YAJLNode parse(const std::string& text) {
    std::istringstream is(text);
    return serialization::YAJLNode(is);
}

/// Reads the member `key` of the document `text` into `value`; returns "" or what it throws.
template <typename T>
std::string from_json(const std::string& text, const std::string& key, T& value) {
    return message_of([&] {
        serialization::YAJLNode node = parse(text);
        serialization::SerializationContext ctx;
        serialization::JSONSerializableType<T>::deserialize(node, ctx, key, value);
        return "";
    });
}

}  // namespace nuv::test
