// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "nuv/json_serializable_type.hpp"

namespace nuv::serialization {

/// Writes and reads the members of an object through the codecs of their types.
struct JSONSerializer {
    /// Writes nothing: an object without members.
    static void serialize_impl(YAJLStream&, SerializationContext&) {}

    /// Writes key, value, key, value, ... in this order. Throws SerializationException.
    template <typename T, typename... Rest>
    static void serialize_impl(YAJLStream& stream, SerializationContext& ctx, std::string_view key,
                               const T& value, const Rest&... rest) {
        // A key is a character array to whoever reads the message, whatever it is here.
        if (!stream.write_string(key)) {
            impl::throw_json_write_failed("CharArray");
        }
        JSONSerializableType<T>::serialize(stream, ctx, value);
        serialize_impl(stream, ctx, rest...);
    }

    /// Reads the member `key` of `node` into `value`. Throws SerializationException.
    template <typename T>
    static void deserialize(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                            T& value) {
        JSONSerializableType<T>::deserialize(node, ctx, key, value);
    }
};

}  // namespace nuv::serialization
