// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/binary_serializable_type.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/hex.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {

using serialization::SerializationContext;

/// What the binary codec of T writes where there is room for `room` octets, as hex, or the text with
/// which it refuses: where there is room, before its first octet.
template <class T>
std::string written(const T& value, std::size_t room = std::string::npos) {
    FullBuffer buffer(room);
    std::ostream os(&buffer);
    SerializationContext ctx;
    const std::string failure =
        message_of([&] { serialization::BinarySerializableType<T>::serialize(os, ctx, value); });
    EXPECT_TRUE(failure.empty() || room != std::string::npos || buffer.text.empty()) << failure;
    return failure.empty() ? to_hex({buffer.text.begin(), buffer.text.end()}) : failure;
}

/// Reads `value` from the octets of `hex`; returns "" or what it throws.
template <class T>
std::string read_octets(std::string_view hex, T& value) {
    std::istringstream is(to_string(from_hex(hex)));
    SerializationContext ctx;
    return message_of(
        [&] { serialization::BinarySerializableType<T>::deserialize(is, ctx, value); });
}

/// Reads a T; expects that to succeed.
template <class T>
T read_as(std::string_view hex, T value = {}) {
    EXPECT_EQ(read_octets(hex, value), "") << hex;
    return value;
}

}  // namespace nuv::test
