// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <clocale>
#include <exception>
#include <iostream>
#include <string>

#include "commands/command.hpp"

namespace {

constexpr int failure = 1;
constexpr int usage_error = 2;

constexpr auto commands = {nuvctl::add_decode,  nuvctl::add_encode,  nuvctl::add_address,
                           nuvctl::add_channel, nuvctl::add_opclass, nuvctl::add_validate};

int run(int argc, char** argv) {
    CLI::App app(
        "Looks at stations, frames, channels and addresses of a Wi-Fi mesh, and makes frames.",
        "nuvctl");
    app.set_version_flag("--version", "nuvctl " NUVCTL_VERSION);
    app.set_help_all_flag("--help-all", "Print the help of every sub-command too and exit");
    app.footer(
        "Results go to standard output, everything else to standard error. Exit status: 0, or 1 "
        "for a\n"
        "failure, 2 for wrong usage. See nuvctl(1).\n\n"
        "Example: nuvctl decode --summary home.pcap");
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("nuvctl: ") + error.what() + "\nRun with --help for more information.\n";
    });
    app.require_subcommand(1);
    int status = 0;
    for (auto* add : commands) {
        add(app, status);
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usage_error;
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    // Text is UTF-8 whatever the environment says, as JSON is.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::ios::sync_with_stdio(false);
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "nuvctl: " << error.what() << '\n';
        return failure;
    }
}
