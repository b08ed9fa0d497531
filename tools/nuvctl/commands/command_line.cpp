// SPDX-License-Identifier: Apache-2.0
#include "commands/command_line.hpp"

#include <CLI/CLI.hpp>
#include <string>

#include "commands/command.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

constexpr auto commands = {add_decode,  add_encode,  add_address,
                           add_channel, add_opclass, add_validate};

std::string problem(const CLI::App& app, const CLI::Error& error) {
    const auto unexpected = app.remaining();
    const bool unknown = app.get_subcommands().empty() && !unexpected.empty() &&
                         !unexpected.front().starts_with('-');
    return unknown ? "unknown subcommand '" + to_printable(unexpected.front()).text + "'"
                   : error.what();
}

}  // namespace

std::unique_ptr<CLI::App> make_parser(int& status) {
    auto app = std::make_unique<CLI::App>(
        "Looks at stations, frames, channels and addresses of a Wi-Fi mesh, and makes frames.",
        "nuvctl");
    app->set_version_flag("--version", "nuvctl " NUVCTL_VERSION);
    app->set_help_all_flag("--help-all", "Print the help of every sub-command too and exit");
    app->footer(
        "Results go to standard output, everything else to standard error. Exit status: 0, or 1 "
        "for a\n"
        "failure, 2 for wrong usage. See nuvctl(1).\n\n"
        "Example: nuvctl decode --summary home.pcap");
    app->failure_message([](const CLI::App* parser, const CLI::Error& error) {
        return "nuvctl: " + problem(*parser, error) + "\nRun with --help for more information.\n";
    });
    app->require_subcommand(1);
    for (auto* add : commands) {
        add(*app, status);
    }
    return app;
}

int run(int argc, const char* const* argv) {
    constexpr int usage_error = 2;
    int status = 0;
    const auto parser = make_parser(status);
    try {
        parser->parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return parser->exit(error) == 0 ? 0 : usage_error;
    }
    return status;
}

}  // namespace nuvctl
