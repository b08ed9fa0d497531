// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace nuv::impl {

/// Of a text that is no MAC address. A reader of JSON lists passes it through, and wraps others.
class InvalidMACText : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

/// Throws the std::invalid_argument of a constructor from `text`, which is none of a `type`.
template <class Exception = std::invalid_argument>
[[noreturn]] void throw_no_valid_text(std::string_view text, std::string_view type) {
    std::string message("'");
    message.append(text).append("' is no valid ").append(type).append(" string");
    throw Exception(message);
}

}  // namespace nuv::impl
