// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "nuv/dynamic_value.hpp"
#include "nuv/json_serializer.hpp"

// Members that are null in JSON as long as they were never set.

namespace nuv::impl {

using serialization::JSONSerializer;
using serialization::SerializationContext;
using serialization::YAJLNode;
using serialization::YAJLStream;

/// What `projection` makes of a value that was set.
template <typename T, typename Strategy, typename Projection>
auto if_set(const DynamicValue<T, Strategy>& field, Projection projection) {
    using Result = std::decay_t<std::invoke_result_t<Projection, const T&>>;
    return field.is_set() ? std::optional<Result>(std::invoke(projection, field.get()))
                          : std::nullopt;
}

/// What write_nullable() writes behind the key.
template <typename T>
struct Nullable {
    std::optional<T> value;
    std::string_view owner;
    std::string_view key;
    std::string_view end;
};

}  // namespace nuv::impl

template <typename T>
struct nuv::serialization::JSONSerializableType<nuv::impl::Nullable<T>> {
    static void serialize(YAJLStream& stream, SerializationContext& ctx,
                          const impl::Nullable<T>& member) {
        if (member.value) {
            JSONSerializableType<T>::serialize(stream, ctx, *member.value);
        } else if (!stream.write_null()) {
            throw SerializationException(std::string("Serialization of ")
                                             .append(member.owner)
                                             .append(" failed: Failed to write null for ")
                                             .append(member.key)
                                             .append(member.end));
        }
    }
};

namespace nuv::impl {

/// Writes the member `key` of an `owner`; `end` closes the message of a null that is refused.
template <typename T>
void write_nullable(YAJLStream& stream, SerializationContext& ctx, std::string_view owner,
                    std::string_view end, std::string_view key, std::optional<T> value) {
    JSONSerializer::serialize_impl(stream, ctx, key,
                                   Nullable<T>{std::move(value), owner, key, end});
}

/// Reads the member `key` into `value`; false, and nothing else, where it is absent or null.
template <typename T>
bool read_nullable(YAJLNode& node, SerializationContext& ctx, const std::string& key, T& value) {
    if (node.get_null(key) || !node.probe_name(key)) {
        return false;
    }
    JSONSerializer::deserialize(node, ctx, key, value);
    return true;
}

}  // namespace nuv::impl
