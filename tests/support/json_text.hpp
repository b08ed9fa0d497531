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
std::string to_json(const T& value, std::size_t room = std::string::npos) {
    SerializationContext ctx;
    return json_of([&](auto& s) { JSONSerializableType<T>::serialize(s, ctx, value); }, room);
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
