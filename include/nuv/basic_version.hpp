// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <string_view>

#include "nuv/export.hpp"
#include "nuv/text_argument.hpp"

namespace nuv {

/// A version of one to four numbers, the first most significant; 0 by default. Numbers that it does
/// not have count as 0: 1.2 equals 1.2.0, they differ in their texts only.
class NUV_EXPORT BasicVersion {
public:
    static constexpr std::string_view TYPE_NAME = "BasicVersion";
    static constexpr std::size_t MAX_COMPONENTS = 4;

    BasicVersion() = default;
    /// Throws std::invalid_argument unless there are one to four.
    BasicVersion(std::initializer_list<std::uint16_t> components);
    /// Throws std::invalid_argument when parse_string() would refuse `text`.
    explicit BasicVersion(TextArgument text);

    std::size_t num_components() const noexcept { return size_; }
    /// 0 for an index that it does not have.
    std::uint16_t operator[](std::size_t index) const noexcept {
        return index < MAX_COMPONENTS ? components_[index] : std::uint16_t{0};
    }

    /// Reads "1.2.3": decimal numbers up to 65535 of digits only. Returns false, and stays what it
    /// was, for anything else.
    bool parse_string(TextArgument text) noexcept;
    std::string to_string() const;

    bool operator==(const BasicVersion& other) const noexcept {
        return components_ == other.components_;
    }
    std::strong_ordering operator<=>(const BasicVersion& other) const noexcept {
        return components_ <=> other.components_;
    }

private:
    std::array<std::uint16_t, MAX_COMPONENTS> components_{};  // zero from size_ on
    std::size_t size_ = 1;
};

NUV_EXPORT std::ostream& operator<<(std::ostream& os, const BasicVersion& version);

}  // namespace nuv

template <>
struct std::hash<nuv::BasicVersion> {
    std::size_t operator()(const nuv::BasicVersion& version) const noexcept {
        std::size_t value = 0;
        for (std::size_t i = 0; i < nuv::BasicVersion::MAX_COMPONENTS; ++i) {
            value = value * 16777619U + version[i];
        }
        return value;
    }
};
