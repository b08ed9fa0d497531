// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace nuvctl {

using Octets = std::span<const std::uint8_t>;

/// The `size` octets, at most four, from `at` on as a number, least significant octet first. None if
/// `octets` end before.
inline std::optional<std::uint32_t> little_endian(Octets octets, std::size_t at, std::size_t size) {
    if (at > octets.size() || octets.size() - at < size) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;) {
        value = value << 8U | octets[at + i];
    }
    return value;
}

}  // namespace nuvctl
