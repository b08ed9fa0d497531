// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace nuv::impl {

/// `power` towards zero, as near as an integer comes; 0 for NaN.
inline std::int32_t whole_dbm(float power) {
    using Limits = std::numeric_limits<std::int32_t>;
    return std::isnan(power) ? 0
                             : static_cast<std::int32_t>(std::clamp<double>(
                                   static_cast<double>(power), Limits::min(), Limits::max()));
}

}  // namespace nuv::impl
