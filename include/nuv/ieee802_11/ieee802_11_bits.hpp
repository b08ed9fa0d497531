// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "nuv/export.hpp"

namespace nuv::ieee802_11 {

/// Adjacent bits of an octet, or all of it, with a name of their own.
struct IEEE802_11_Bits {
    std::string_view name{};
    std::uint8_t octet = 0;  ///< its place among the octets that they are part of
    std::uint8_t first = 0;  ///< the lowest of them
    std::uint8_t count = 8;
    bool is_signed = false;  ///< two's complement; only for whole octets

    constexpr std::uint8_t get(std::uint8_t from) const {
        return static_cast<std::uint8_t>((from & mask()) >> first);
    }
    /// Higher bits of `value` than there is room for are lost.
    constexpr void set(std::uint8_t& in, unsigned value) const {
        in = static_cast<std::uint8_t>((in & ~mask()) | (value << first & mask()));
    }

private:
    constexpr unsigned mask() const { return ((1U << count) - 1) << first; }
};

}  // namespace nuv::ieee802_11
