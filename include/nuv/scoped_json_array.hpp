// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/scoped_json.hpp"

namespace nuv::serialization {

/// A JSON array that is open as long as the scope.
using ScopedJSONArray = impl::ScopedJSON<impl::JSONContainer::ARRAY>;

}  // namespace nuv::serialization
