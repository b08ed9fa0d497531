// SPDX-License-Identifier: Apache-2.0
#include "commands/report.hpp"

#include <iostream>

#include "text/text.hpp"

namespace nuvctl {

void report(const std::string& message) {
    std::cout.flush();
    std::cerr << "nuvctl: " << to_printable(message).text << '\n';
}

}  // namespace nuvctl
