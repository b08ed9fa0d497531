// SPDX-License-Identifier: Apache-2.0
#include "commands/command.hpp"

#include <CLI/CLI.hpp>
#include <iostream>
#include <utility>

#include "file.hpp"
#include "text/text.hpp"

namespace nuvctl {

void set_action(CLI::App& command, int& status, std::function<int()> run) {
    command.callback([&status, run = std::move(run)] {
        try {
            status = run();
            if (!std::cout.flush()) {
                throw OutputError("-");
            }
        } catch (const OutputError& error) {
            if (!error.is_broken_pipe()) {
                report(error.what());
            }
            status = 1;
        }
    });
}

void report(const std::string& message) {
    std::cout.flush();
    std::cerr << "nuvctl: " << to_printable(message).text << '\n';
}

}  // namespace nuvctl
