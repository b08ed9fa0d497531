// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "nuv/export.hpp"

namespace nuv {

/// The text that a function is given: as std::string_view, but made of a null pointer it is empty.
/// No text that an address or an identity is made of is empty, so that null is refused like one.
class TextArgument : public std::string_view {
public:
    constexpr TextArgument(const char* text) noexcept
        : std::string_view(text != nullptr ? std::string_view(text) : std::string_view()) {}
    constexpr TextArgument(std::string_view text) noexcept : std::string_view(text) {}
    TextArgument(const std::string& text) noexcept : std::string_view(text) {}
};

}  // namespace nuv
