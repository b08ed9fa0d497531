// SPDX-License-Identifier: Apache-2.0
#include <clocale>
#include <exception>
#include <iostream>

#include "commands/command_line.hpp"
#include "commands/report.hpp"

int main(int argc, char** argv) {
    constexpr int failure = 1;
    // Text is UTF-8 whatever the environment says, as JSON is.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::ios::sync_with_stdio(false);
    try {
        return nuvctl::run(argc, argv);
    } catch (const std::exception& error) {
        nuvctl::report(error.what());
        return failure;
    }
}
