// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>
#include <sstream>
#include <string>

#include "nuv/json_serializable_type.hpp"
#include "tests/support/failures.hpp"

namespace nuv::test {

using serialization::JSONSerializableType;
using serialization::SerializationContext;
using serialization::YAJLNode;
using serialization::YAJLStream;

/// The compact JSON that `function` writes where there is room for `room` bytes, or what it throws.
std::string json_of(auto&& function, std::size_t room = std::string::npos) {
    FullBuffer buffer(room);
    std::ostream os(&buffer);
    YAJLStream stream(os, YAJLStream::YAJLIndentation::COMPACT);
    const std::string failure = message_of([&] { function(stream); });
    return failure.empty() ? buffer.text : failure;
}

template <typename T>
void write_json(YAJLStream& stream, const T& value) {
    SerializationContext ctx;
    JSONSerializableType<T>::serialize(stream, ctx, value);
}

template <typename T>
std::string to_json(const T& value, std::size_t room = std::string::npos) {
    return json_of([&](auto& s) { write_json(s, value); }, room);
}

/// What `function` says that writes, where there is room for ever more bytes: each text once.
std::string refusals(auto&& function) {
    std::string messages;
    std::string last;
    for (std::size_t room = 0; room < json_of(function).size(); ++room) {
        const std::string message = json_of(function, room);
        messages += message == last ? "" : (last.empty() ? "" : "|") + message;
        last = message;
    }
    return messages;
}

inline YAJLNode parse(const std::string& text) {
    std::istringstream is(text);
    return YAJLNode(is);
}

/// Reads the member `key` of the document `text` into `value`; returns "" or what it throws.
template <typename T>
std::string from_json(const std::string& text, const std::string& key, T& value) {
    SerializationContext ctx;
    return message_of([&] {
        YAJLNode node = parse(text);
        JSONSerializableType<T>::deserialize(node, ctx, key, value);
    });
}

}  // namespace nuv::test
