// SPDX-License-Identifier: Apache-2.0
#include "nuv/id.hpp"

#include <ostream>

#include "internal/no_valid_text.hpp"

namespace nuv {

ID::ID(TextArgument text) {
    if (!parse_string(text)) {
        impl::throw_no_valid_text(text, TYPE_NAME);
    }
}

bool ID::parse_string(TextArgument text) {
    if (text.empty()) {
        return false;
    }
    text_ = text;
    return true;
}

std::ostream& operator<<(std::ostream& os, const ID& id) { return os << id.to_string(); }

}  // namespace nuv
