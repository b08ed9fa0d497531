// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace nuv::impl {

/// Octets as two upper-case hex digits each, joined by ":".
template <std::size_t N>
class OctetText {
public:
    explicit OctetText(const std::array<std::uint8_t, N>& octets) noexcept {
        constexpr const char* DIGITS = "0123456789ABCDEF";
        for (std::size_t i = 0; i < N; ++i) {
            text_[3 * i] = DIGITS[octets[i] >> 4U];
            text_[3 * i + 1] = DIGITS[octets[i] & 0x0FU];
            text_[3 * i + 2] = ':';
        }
    }
    std::string_view view() const noexcept { return {text_.data(), text_.size() - 1}; }

private:
    std::array<char, 3 * N> text_;
};

}  // namespace nuv::impl
