// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "nuv/export.hpp"

namespace nuv::serialization {

/// The kinds of units that have a number.
enum class UIDType : std::uint8_t {
    NODE = 0,            ///< "n-"
    NODE_INTERFACE = 1,  ///< "ni-"
    NODE_LINK = 2,       ///< "nl-"
};

/// "ni-7" for NODE_INTERFACE and 7; "INVALID" for an unknown type.
NUV_EXPORT std::string uid_to_string(UIDType type, std::uint32_t id);

/// Reads the number behind the prefix of `type` into `id`. What follows the number is not looked
/// at, blanks and a sign before it are accepted, and of a number above 32 bits the low bits count.
/// Throws SerializationException, with `id` as before, for a text of another form and for an
/// unknown type.
NUV_EXPORT void string_to_uid(UIDType type, const std::string& text, std::uint32_t& id);

}  // namespace nuv::serialization
