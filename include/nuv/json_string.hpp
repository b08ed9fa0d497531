// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "nuv/export.hpp"

namespace nuv::serialization {

/// `text` with \b \t \n \f \r \" \\ escaped by their letters, and every other byte below 0x20 and
/// above 0x7F as "\u" and the byte, sign-extended to 32 bits, in at least four lower-case hex
/// digits: 0x01 is \u0001, 0xC3 is \uffffffc3. Not for YAJLStream::write_string(), which escapes by
/// itself.
NUV_EXPORT std::string json_string_escape(const std::string& text);

/// Resolves \b \f \n \r \t, and \uXXXX to the single byte of its low 8 bits (no UTF-8). A backslash
/// before anything else, "u" without four hex digits included, is dropped; one at the very end
/// stays. Not the inverse of json_string_escape() for bytes above 0x7F.
NUV_EXPORT std::string json_string_unescape(const std::string& text);

}  // namespace nuv::serialization
