// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "nuv/export.hpp"
#include "nuv/text_argument.hpp"

namespace nuv {

/// A name that something is found under: any text. Deliberate: except the empty one, which finds
/// nothing; only a moved-from ID is empty. Ordered by bytes.
class NUV_EXPORT ID {
public:
    static constexpr std::string_view TYPE_NAME = "ID";

    /// Throws std::invalid_argument if `text` is empty.
    explicit ID(TextArgument text);

    /// Returns false, and stays what it was, if `text` is empty.
    bool parse_string(TextArgument text);
    const std::string& to_string() const noexcept { return text_; }

    bool operator==(const ID&) const = default;
    std::strong_ordering operator<=>(const ID& other) const noexcept {
        return text_ <=> other.text_;
    }

private:
    std::string text_;
};

NUV_EXPORT std::ostream& operator<<(std::ostream& os, const ID& id);

}  // namespace nuv

template <>
struct std::hash<nuv::ID> {
    std::size_t operator()(const nuv::ID& id) const noexcept {
        return std::hash<std::string>()(id.to_string());
    }
};
