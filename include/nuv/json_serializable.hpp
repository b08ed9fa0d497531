// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/export.hpp"
#include "nuv/serialization_context.hpp"

namespace nuv::serialization {

class YAJLNode;
class YAJLStream;

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
