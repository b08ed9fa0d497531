// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "nuv/export.hpp"
#include "nuv/serialization_context.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::serialization {

class YAJLNode;
class YAJLStream;

/// The JSON codec of the value type T, one specialisation per type or family of types:
///
///     static void serialize(YAJLStream&, SerializationContext&, const T&);
///     static void deserialize(YAJLNode&, SerializationContext&, const std::string& key, T&);
///
/// serialize() writes one value. deserialize() reads the member `key` of the object `node`, or the
/// node itself when `key` is empty (elements of an array). When it fails, an object may be partly
/// replaced; every other target keeps its value. Both throw SerializationException. The codecs of
/// numbers, texts, enumerations, objects and lists are in json_serializable_type.hpp.
template <typename T>
struct JSONSerializableType;

/// Base of every class that is written as a JSON object of its own.
class NUV_EXPORT JSONSerializable {
public:
    virtual ~JSONSerializable();

    /// Writes the members, keys and values, into the object that the caller has opened. Throws
    /// SerializationException when a writer refuses.
    virtual void serialize_impl(YAJLStream& stream, SerializationContext& ctx) const = 0;

    /// Reads the members from the node of the object, in whatever order they come, and ignores what
    /// it does not know. Throws SerializationException when one is missing or malformed; the object
    /// may then be partly replaced, callers discard it.
    virtual void deserialize_impl(YAJLNode& node, SerializationContext& ctx) = 0;

protected:
    JSONSerializable() = default;
    JSONSerializable(const JSONSerializable&) = default;
    JSONSerializable(JSONSerializable&&) = default;
    JSONSerializable& operator=(const JSONSerializable&) = default;
    JSONSerializable& operator=(JSONSerializable&&) = default;
};

}  // namespace nuv::serialization
