// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>

#include "nuv/serialization_context.hpp"

namespace nuv::serialization {

/// For value types without a default constructor: a specialisation's static
/// `make_default(std::istream&, SerializationContext&)` returns a placeholder that the caller fills
/// with `deserialize`. It reads nothing.
template <class T>
struct BinarySerializeFactory;

}  // namespace nuv::serialization
