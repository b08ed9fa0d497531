// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sstream>
#include <string>

#include "nuv/binary_serializable_type.hpp"
#include "tools/vectors/hex.hpp"

namespace nuv::test {

/// What the codec of T writes for `value`, as hex.
template <class T>
std::string written(const T& value) {
    std::ostringstream os;
    serialization::SerializationContext ctx;
    serialization::BinarySerializableType<T>::serialize(os, ctx, value);
    const std::string bytes = os.str();
    return to_hex({bytes.begin(), bytes.end()});
}

/// The message of the SerializationException that `function` throws, "" if it throws none.
template <class Function>
std::string message_of(Function function) {
    try {
        function();
    } catch (const serialization::SerializationException& e) {
        return e.what();
    }
    return {};
}

}  // namespace nuv::test
