// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/export.hpp"

namespace nuv::serialization {

/// Passed by reference through every serialize and deserialize call, binary and JSON alike. The
/// library hands it on and reads nothing from it; it is the place where a later version can carry
/// options without changing a signature.
class SerializationContext {
public:
    SerializationContext() = default;
};

}  // namespace nuv::serialization
