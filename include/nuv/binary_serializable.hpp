// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>

#include "nuv/export.hpp"
#include "nuv/serialization_context.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::serialization {

/// Base of every class with a binary form of its own.
class NUV_EXPORT BinarySerializable {
public:
    virtual ~BinarySerializable() = default;

    /// Writes the object to `os`. Throws SerializationException when the object has no binary form
    /// or the stream fails; what was written until then stays written.
    virtual void serialize_impl(std::ostream& os, SerializationContext& ctx) const = 0;

    /// Reads the object from `is`. Throws SerializationException on malformed input; the object may
    /// then be partly replaced, callers discard it.
    virtual void deserialize_impl(std::istream& is, SerializationContext& ctx) = 0;

protected:
    BinarySerializable() = default;
    BinarySerializable(const BinarySerializable&) = default;
    BinarySerializable(BinarySerializable&&) = default;
    BinarySerializable& operator=(const BinarySerializable&) = default;
    BinarySerializable& operator=(BinarySerializable&&) = default;
};

}  // namespace nuv::serialization
