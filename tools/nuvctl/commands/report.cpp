// SPDX-License-Identifier: Apache-2.0
#include "commands/report.hpp"

#include <iostream>

#include "text/text.hpp"

namespace nuvctl {

void report(const std::string& message) {
    std::cout.flush();
    std::cerr << "nuvctl: " << to_printable(message).text << '\n';
}

std::string megahertz_hint(std::int64_t khz) {
    constexpr std::int64_t first = 1'000;
    constexpr std::int64_t last = 100'000;
    return first <= khz && khz <= last ? ": MHz? write " + std::to_string(khz * 1'000) : "";
}

}  // namespace nuvctl
