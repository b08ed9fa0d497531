// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
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
        std::size_t cut = text.rfind('\n', limit);
        if (cut == std::string::npos || cut <= start) {
            cut = text.rfind(' ', limit);
        }
        const bool hard = cut == std::string::npos || cut < start;
        const std::size_t stop = hard ? limit : cut;
        const char after = std::exchange(text[stop], '\0');
        log(text.c_str() + start);
        text[stop] = after;
        // After a hard cut the newline takes the place of a character that was logged.
        start = hard ? limit - 1 : cut;
        text[start] = '\n';
    }
    log(text.c_str() + start);
}

}  // namespace nuv::impl
