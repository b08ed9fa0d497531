// SPDX-License-Identifier: Apache-2.0
#include "nuv/json_serializable.hpp"

namespace nuv::serialization {

JSONSerializable::~JSONSerializable() = default;

}  // namespace nuv::serialization
