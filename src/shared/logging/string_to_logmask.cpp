// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/string_to_logmask.hpp"

#include <algorithm>
#include <map>

namespace nuv::logging {

std::uint16_t string_to_logmask(const std::string& name) {
    // An ordered map: the text of its out-of-range error is part of the interface.
    static const std::map<std::string, std::uint16_t> MASKS = {
        {"TRACE", 31}, {"DEBUG", 15}, {"INFO", 7}, {"WARN", 3}, {"ERROR", 1}};
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return MASKS.at(upper);
}

}  // namespace nuv::logging
