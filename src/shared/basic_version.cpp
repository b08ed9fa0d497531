// SPDX-License-Identifier: Apache-2.0
#include "nuv/basic_version.hpp"

#include <algorithm>
#include <charconv>
#include <ostream>
#include <stdexcept>

#include "internal/no_valid_text.hpp"

namespace nuv {

BasicVersion::BasicVersion(std::initializer_list<std::uint16_t> components)
    : size_(components.size()) {
    if (size_ == 0 || size_ > MAX_COMPONENTS) {
        throw std::invalid_argument("A BasicVersion has one to four numbers, not " +
                                    std::to_string(size_));
    }
    std::ranges::copy(components, components_.begin());
}

BasicVersion::BasicVersion(TextArgument text) {
    if (!parse_string(text)) {
        impl::throw_no_valid_text(text, TYPE_NAME);
    }
}

bool BasicVersion::parse_string(TextArgument text) noexcept {
    BasicVersion read;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (read.size_ = 0; read.size_ < MAX_COMPONENTS;) {
        const auto [next, error] = std::from_chars(at, end, read.components_[read.size_]);
        if (error != std::errc()) {
            return false;
        }
        ++read.size_;
        if (next == end) {
            *this = read;
            return true;
        }
        if (*next != '.') {
            return false;
        }
        at = next + 1;
    }
    return false;
}

std::string BasicVersion::to_string() const {
    std::string text = std::to_string(components_[0]);
    for (std::size_t i = 1; i < size_; ++i) {
        text += '.';
        text += std::to_string(components_[i]);
    }
    return text;
}

std::ostream& operator<<(std::ostream& os, const BasicVersion& version) {
    return os << version.to_string();
}

}  // namespace nuv
