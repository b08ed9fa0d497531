// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace nuv::impl {

inline constexpr std::uint8_t max_link_id = 0xF;

/// Throws std::invalid_argument for a number that does not fit the four bits of a link ID.
inline void require_link_id(std::uint8_t link_id) {
    if (link_id > max_link_id) {
        throw std::invalid_argument("Link ID " + std::to_string(link_id) + " is not 0 to 15");
    }
}

}  // namespace nuv::impl
