// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "nuv/printable.hpp"

namespace nuvctl {

/// Two lower-case digits an octet.
std::string to_hex(std::span<const std::uint8_t> octets);
/// Reads two digits an octet, upper or lower case; none for anything else.
std::optional<std::vector<std::uint8_t>> from_hex(std::string_view text);

/// The octets as characters.
std::string_view as_text(std::span<const std::uint8_t> octets);

using nuv::is_utf8;
using nuv::Printable;
using nuv::to_printable;
using nuv::to_utf8;

/// The name of the member that says what the code `name` means.
std::string meaning_of(std::string_view name);

/// The name of the member that has the octets of the text `name`.
std::string hex_of(std::string_view name);

}  // namespace nuvctl
