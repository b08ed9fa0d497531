// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace nuv::impl {

/// Hands a record's text to `log(const char*)`: without its NULs and one final newline, in pieces
/// when it is longer than `size` bytes, 0 and 1 meaning any length. The text is spoilt.
template <typename Log>
void log_pieces(std::string& text, std::uint32_t size, Log log) {
    if (text.find('\0') != std::string::npos) {  // the search is much faster than the removal
        std::erase(text, '\0');
    }
    if (text.ends_with('\n')) {
        text.pop_back();
    }
    std::size_t start = 0;
    while (size > 1 && size < text.size() - start) {
        const std::size_t limit = start + size;
        // Each piece but the first starts with the newline that stands for the separator, so a
        // newline at `start` is no place to cut. A blank there is: it can only be the first piece.
        const std::string_view window(text.data() + start, std::size_t{size} + 1);
        std::size_t length = window.rfind('\n');
        if (length == std::string_view::npos || length == 0) {
            length = window.rfind(' ');
        }
        const bool hard = length == std::string_view::npos;
        const std::size_t stop = hard ? limit : start + length;
        const char after = std::exchange(text[stop], '\0');
        log(text.c_str() + start);
        text[stop] = after;
        // After a hard cut the newline takes the place of a character that was logged.
        start = hard ? limit - 1 : stop;
        text[start] = '\n';
    }
    log(text.c_str() + start);
}

}  // namespace nuv::impl
