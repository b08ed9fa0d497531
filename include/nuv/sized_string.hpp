// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "nuv/export.hpp"
#include "nuv/serialization_context.hpp"

namespace nuv::serialization {

/// Writes the length of `s` as one octet, then its bytes. Throws SerializationException, writing
/// nothing, if the length is not in [`min`, `max`]; and if the stream fails.
NUV_EXPORT void serialize_string_with_uint8_size(std::ostream& os, SerializationContext& ctx,
                                                 const std::string& s, std::uint8_t min,
                                                 std::uint8_t max);

/// Reads a length octet and that many bytes into `out`. Throws SerializationException if the length
/// is not in [`min`, `max`] or the stream fails; `out` is then unchanged, what was read is
/// consumed.
NUV_EXPORT void deserialize_string_with_uint8_size(std::istream& is, SerializationContext& ctx,
                                                   std::string& out, std::uint8_t min,
                                                   std::uint8_t max);

}  // namespace nuv::serialization
