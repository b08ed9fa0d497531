// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

#include "nuv/json_serializable_type.hpp"

namespace nuv::test {

/// A sink with room for some bytes; then it refuses, or throws.
class FullBuffer : public std::streambuf {
public:
    explicit FullBuffer(std::size_t room, bool throws = false) : room_(room), throws_(throws) {}
    int syncs = 0;

private:
    int_type overflow(int_type byte) override {
        if (room_ > 0) {
            --room_;
            return byte;
        }
        return throws_ ? throw std::runtime_error("full") : traits_type::eof();
    }
    int sync() override { return ++syncs, 0; }

    std::size_t room_;
    bool throws_;
};

/// What `function` throws says; "" when it throws nothing.
template <typename Exception = serialization::SerializationException>
std::string message_of(auto&& function) {
    try {
        function();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return "";
}

/// What `function` writes to the stream that it is given.
inline std::string json_of(auto&& function, serialization::YAJLStream::YAJLIndentation indentation =
                                                serialization::YAJLStream::YAJLIndentation{0}) {
    std::ostringstream os;
    serialization::YAJLStream stream(os, indentation);
    function(stream);
    return os.str();
}

template <typename T>
void write_json(serialization::YAJLStream& stream, const T& value) {
    serialization::SerializationContext ctx;
    serialization::JSONSerializableType<T>::serialize(stream, ctx, value);
}

inline serialization::YAJLNode parse(const std::string& text) {
    std::istringstream is(text);
    return serialization::YAJLNode(is);
}

/// Reads the member `key` of the document `text`, or the document itself, into `value`.
template <typename T>
void read_json(const std::string& text, const std::string& key, T& value) {
    serialization::YAJLNode node = parse(text);
    serialization::SerializationContext ctx;
    serialization::JSONSerializableType<T>::deserialize(node, ctx, key, value);
}

/// The message of writing `value` to a stream that takes `room` bytes only.
template <typename T>
std::string write_failure(const T& value, std::size_t room = 0) {
    FullBuffer buffer(room);
    std::ostream os(&buffer);
    serialization::YAJLStream stream(os, serialization::YAJLStream::YAJLIndentation{0});
    return message_of([&] { write_json(stream, value); });
}

/// The message of reading the member `key` of the document `text` as a T.
template <typename T>
std::string read_failure(const std::string& text, const std::string& key, T value = T()) {
    return message_of([&] { read_json(text, key, value); });
}

}  // namespace nuv::test
