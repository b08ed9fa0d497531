// SPDX-License-Identifier: Apache-2.0
#include "text/timestamp.hpp"

#include <array>
#include <charconv>
#include <cstdio>
#include <ctime>

namespace nuvctl {

std::string to_string(const Timestamp& time) {
    const auto seconds = static_cast<std::time_t>(time.seconds);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    std::array<char, 64> text{};
    const std::size_t size = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &utc);
    std::snprintf(text.data() + size, text.size() - size, ".%06dZ", time.microseconds);
    return text.data();
}

std::optional<Timestamp> parse_timestamp(const std::string& text) {
    std::tm utc{};
    Timestamp time;
    const char* fraction = strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S.", &utc);
    if (fraction == nullptr) {
        return std::nullopt;
    }
    time.seconds = timegm(&utc);
    std::from_chars(fraction, text.data() + text.size(), time.microseconds);
    // Whatever is out of range or in another form comes out as another text.
    return to_string(time) == text ? std::optional(time) : std::nullopt;
}

}  // namespace nuvctl
