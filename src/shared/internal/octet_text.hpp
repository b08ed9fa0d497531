// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>

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

/// Reads such a text, in upper or lower case, straight into `octets`: where it returns false, those
/// before the fault are replaced.
template <std::size_t N>
bool parse_octet_text(std::string_view text, std::array<std::uint8_t, N>& octets) noexcept {
    if (text.size() != 3 * N - 1 ||
        text.find_first_not_of("0123456789ABCDEFabcdef:") != std::string_view::npos) {
        return false;
    }
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < N; ++i) {
        if (i > 0 && (at == end || *at++ != ':')) {
            return false;
        }
        const auto [next, error] = std::from_chars(at, std::min(at + 2, end), octets[i], 16);
        if (error != std::errc()) {
            return false;
        }
        at = next;
    }
    return at == end;
}

}  // namespace nuv::impl
