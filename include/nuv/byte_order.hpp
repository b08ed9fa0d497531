// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <cstdint>

#include "nuv/export.hpp"

namespace nuv {

/// `value` with its octets in reverse: from the order in which this library keeps a number of IEEE
/// 802.11 to the one that the standard means, and back.
template <std::unsigned_integral T>
constexpr T swap_octets(T value) {
    std::uint64_t swapped = 0;
    for (unsigned k = 0; k < sizeof(T); ++k) {
        swapped = swapped << 8U | (std::uint64_t{value} >> (8 * k) & 0xFFU);
    }
    return static_cast<T>(swapped);
}

}  // namespace nuv
