// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace nuv::impl {

/// Reads a text from its beginning as scanf does in the "C" locale, as far as its first NUL, and
/// alike on every machine.
class TextScan {
public:
    static constexpr unsigned UNLIMITED = std::numeric_limits<unsigned>::max();

    explicit TextScan(std::string_view text) noexcept : rest_(text.substr(0, text.find('\0'))) {}

    /// "%u" and "%x", of at most `width` characters: blanks before it do not count, a sign does,
    /// and in base 16 "0x". A negative number is taken modulo 2^32, a larger one is 2^32 - 1.
    /// Returns false where there is no number; `number` is then unchanged.
    template <std::uint32_t base>
    bool number(std::uint32_t& number, unsigned width = UNLIMITED) noexcept {
        skip_blanks();
        rest_width_ = width;
        const bool negative = take('-');
        if (!negative) {
            take('+');
        }
        bool any = take('0');
        if (base == 16 && any && !take('x')) {
            take('X');
        }
        std::uint64_t value = 0;
        for (std::uint32_t digit = next_digit(); digit < base; digit = next_digit()) {
            any = true;
            value = std::min<std::uint64_t>(value * base + digit, TOO_LARGE);
            advance();
        }
        if (any) {
            number = value == TOO_LARGE ? std::numeric_limits<std::uint32_t>::max()
                     : negative         ? 0U - static_cast<std::uint32_t>(value)
                                        : static_cast<std::uint32_t>(value);
        }
        return any;
    }

    /// The character `c` itself.
    bool literal(char c) noexcept {
        rest_width_ = UNLIMITED;
        return take(c);
    }

    /// Whether nothing but blanks is left.
    bool at_end() noexcept {
        skip_blanks();
        return rest_.empty();
    }

private:
    static constexpr std::uint64_t TOO_LARGE = std::uint64_t{1} << 32U;
    static constexpr std::uint32_t NO_DIGIT = 255;

    void advance() noexcept {
        rest_.remove_prefix(1);
        --rest_width_;
    }
    bool take(char c) noexcept {
        const bool there = rest_width_ > 0 && !rest_.empty() && rest_.front() == c;
        if (there) {
            advance();
        }
        return there;
    }
    void skip_blanks() noexcept {
        while (!rest_.empty() &&
               (rest_.front() == ' ' || (rest_.front() >= '\t' && rest_.front() <= '\r'))) {
            rest_.remove_prefix(1);
        }
    }
    std::uint32_t next_digit() const noexcept {
        if (rest_width_ == 0 || rest_.empty()) {
            return NO_DIGIT;
        }
        const char c = rest_.front();
        return c >= '0' && c <= '9'   ? static_cast<std::uint32_t>(c - '0')
               : c >= 'a' && c <= 'f' ? static_cast<std::uint32_t>(c - 'a' + 10)
               : c >= 'A' && c <= 'F' ? static_cast<std::uint32_t>(c - 'A' + 10)
                                      : NO_DIGIT;
    }

    std::string_view rest_;
    unsigned rest_width_ = UNLIMITED;
};

}  // namespace nuv::impl
