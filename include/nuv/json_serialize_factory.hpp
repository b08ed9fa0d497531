// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "nuv/serialization_context.hpp"

namespace nuv::serialization {

class YAJLNode;

/// Makes the object that the JSON codec of T then reads into, where a codec has to make one itself:
/// for the elements of a list. A type without a default constructor specialises it.
template <typename T>
struct JSONSerializeFactory {
    static T make_default(YAJLNode&, SerializationContext&, const std::string&) { return T(); }
};

}  // namespace nuv::serialization
