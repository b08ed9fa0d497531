// SPDX-License-Identifier: Apache-2.0
#include "nuv/uid.hpp"

#include <array>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "internal/quote.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::serialization {

namespace {
constexpr std::array<std::string_view, 3> PREFIXES{"n-", "ni-", "nl-"};
}

std::string uid_to_string(UIDType type, std::uint32_t id) {
    const auto index = static_cast<std::size_t>(type);
    return index < PREFIXES.size() ? std::string(PREFIXES[index]) + std::to_string(id) : "INVALID";
}

void string_to_uid(UIDType type, const std::string& text, std::uint32_t& id) {
    const auto index = static_cast<std::size_t>(type);
    if (index >= PREFIXES.size()) {
        throw SerializationException("Could not convert string to uid, wrong type: " +
                                     std::to_string(index));
    }
    const std::string_view prefix = PREFIXES[index];
    // Scanned with more bits than are kept: what a scan of 32 bits makes of a larger number depends
    // on the size of long.
    unsigned long long number = 0;
    if (!text.starts_with(prefix) ||
        std::sscanf(text.c_str() + prefix.size(), "%llu", &number) != 1) {
        throw SerializationException("Could not convert string to uid, failed scan of string: " +
                                     impl::quote(text));
    }
    id = static_cast<std::uint32_t>(number);
}

}  // namespace nuv::serialization
