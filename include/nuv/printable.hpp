// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "nuv/export.hpp"

namespace nuv {

/// Whether `text` is well-formed UTF-8 (RFC 3629).
NUV_EXPORT bool is_utf8(std::string_view text);

/// `text` with U+FFFD for each octet that belongs to no UTF-8 sequence.
NUV_EXPORT std::string to_utf8(std::string_view text);

/// A text from outside, for a line that people read.
struct Printable {
    std::string text;
    std::size_t columns;  ///< that it takes on a terminal
};

/// Makes a text from outside, such as an SSID, fit for a terminal: everything that the terminal would
/// obey or not show stands there by its number, \x1b for an octet, \u202e for a character, and a
/// backslash is doubled. The locale (LC_CTYPE) decides what can be shown: outside ASCII nothing,
/// until the program calls setlocale().
NUV_EXPORT Printable to_printable(std::string_view text);

}  // namespace nuv
