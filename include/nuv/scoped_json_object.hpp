// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/scoped_json.hpp"

namespace nuv::serialization {

/// A JSON object that is open as long as the scope.
using ScopedJSONObject = impl::ScopedJSON<impl::JSONContainer::OBJECT>;

}  // namespace nuv::serialization
