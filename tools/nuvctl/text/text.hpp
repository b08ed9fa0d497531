// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nuvctl {

/// Two lower-case digits an octet.
std::string to_hex(std::span<const std::uint8_t> octets);
/// Reads two digits an octet, upper or lower case; none for anything else.
std::optional<std::vector<std::uint8_t>> from_hex(std::string_view text);

/// The octets as characters.
std::string_view as_text(std::span<const std::uint8_t> octets);

/// Whether `text` is well-formed UTF-8 (RFC 3629).
bool is_utf8(std::string_view text);

/// `text` with U+FFFD for each octet that belongs to no UTF-8 sequence.
std::string to_utf8(std::string_view text);

/// A text from outside, for a line that people read.
struct Printable {
    std::string text;
    std::size_t columns;  // that it takes on a terminal
};

/// Everything that a terminal would obey or not show stands there by its number: \x1b for an octet,
/// \u202e for a character; a backslash is doubled.
Printable to_printable(std::string_view text);

}  // namespace nuvctl
