// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace nuv::impl {

/// Throws the std::invalid_argument of a constructor from `text`, which is none of a `type`.
[[noreturn]] inline void throw_no_valid_text(std::string_view text, std::string_view type) {
    std::string message("'");
    message.append(text).append("' is no valid ").append(type).append(" string");
    throw std::invalid_argument(message);
}

}  // namespace nuv::impl
