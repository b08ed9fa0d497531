// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iomanip>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace nuv::impl {

/// `text`, a value from outside, as messages quote it: in double quotes, those and backslashes in
/// it escaped with a backslash.
inline std::string quote(std::string_view text) {
    std::ostringstream os;
    os << std::quoted(text);
    return std::move(os).str();
}

}  // namespace nuv::impl
