// SPDX-License-Identifier: Apache-2.0
// The only file that includes CLI11, which takes longer to compile than the rest of the tool.
#include "commands/command_line.hpp"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdint>
#include <iostream>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "file.hpp"
#include "frames/action_frame.hpp"
#include "frames/association_request.hpp"
#include "frames/link_layer.hpp"
#include "nuv/ip_address.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

std::vector<std::string> frame_types() {
    std::vector<std::string> names{std::string(AssociationRequest::association),
                                   std::string(AssociationRequest::reassociation)};
    for (const ActionType& type : action_types()) {
        names.emplace_back(type.name);
    }
    return names;
}

/// What is wrong with an option's value as an IP address.
std::string problem_of_ip_address(const std::string& text) {
    try {
        static_cast<void>(nuv::IPAddress::guess_version_and_parse(text));
        return {};
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

/// Refuses what is no plain decimal number, as "044" and "+4", and numbers out of range.
CLI::Validator decimal(std::uint32_t least, std::uint32_t greatest) {
    const std::string range = std::to_string(least) + " to " + std::to_string(greatest);
    const auto problem = [=](const std::string& text) {
        std::uint32_t number = 0;
        const char* end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, number);
        const bool is_plain =
            read.ec == std::errc() && read.ptr == end && (text == "0" || !text.starts_with('0'));
        return is_plain && least <= number && number <= greatest
                   ? std::string()
                   : text + " is not a decimal number from " + range;
    };
    return {problem, range};
}

// The parser splits an argument "[a,b]" into two, and drops "++", which ends a subcommand. A NUL, which
// no argument holds, behind it prevents that, until the option takes its value.
constexpr char shield = '\0';

/// The arguments as the parser takes them, the last one first.
std::vector<std::string> shielded_arguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        arguments.emplace_back(argv[i]);
        if (arguments.back().starts_with('[') || arguments.back() == "++") {
            arguments.back() += shield;
        }
    }
    return arguments;
}

/// Takes the shield from the value. Returns what is wrong with the value.
std::string unshield(std::string& value) {
    if (value.ends_with(shield)) {
        value.pop_back();
    }
    return value.empty() ? "empty value" : "";
}

/// Refuses empty values, and values of flags. For the options of the command and of its groups.
void take_values_literally(CLI::App& command) {
    for (CLI::Option* option : command.get_options()) {
        if (option->get_items_expected_max() == 0) {
            option->disable_flag_override();
        } else {
            option->transform(CLI::Validator(unshield, ""));
        }
    }
    for (CLI::App* group : command.get_subcommands({})) {
        take_values_literally(*group);
    }
}

void add_options(CLI::App& command, DecodeOptions& options) {
    auto* pretty = command.add_flag("--pretty", options.pretty, "Indent the JSON");
    command.add_flag("--summary", options.summary, "Print a table instead, one line per station")
        ->excludes(pretty);
    command
        .add_option("--type", options.types,
                    "Only frames of this type; may be given again, or several with commas")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("TYPE")
        ->check(CLI::IsMember(frame_types()));
    command
        .add_option("FILE", options.files,
                    "pcap or pcapng, also compressed by gzip; - is standard input")
        ->capture_default_str();
    command.footer(
        "Reads the link types " + ieee802_11_link_types() +
        ".\n"
        "Numbers are shown as the standard defines them. A frame that the library cannot read "
        "whole has\n"
        "an \"error\" that says why.\n\n"
        "Example: nuvctl decode home.pcap | jq -r '[.station, .ssid, .security] | @tsv'");
}

void add_options(CLI::App& command, EncodeOptions& options) {
    command
        .add_option("--format", options.format,
                    "hex: one line per frame body; pcap: a capture file")
        ->check(CLI::IsMember({"hex", "pcap"}))
        ->capture_default_str();
    command.add_option("--output", options.output, "Write to this file, - is standard output")
        ->capture_default_str();
    command.add_option("FILE", options.files, "JSON, - is standard input")->capture_default_str();
    command.footer(
        "Reads type, time, station, bssid, the fields of the type's own and of each element id, "
        "extension\n"
        "and fields; an element of any kind may have a body_hex as its only field. What decode "
        "derives from\n"
        "them (ssid, security, rsn, name, offset, length and the rest) may stand there and is not "
        "read.\n"
        "Stops at the first frame that cannot be made and says where.\n\n"
        "Example: nuvctl decode home.pcap | sed 's/\"mdid\":4660/\"mdid\":1/' |\n"
        "         nuvctl encode --format pcap --output edited.pcap");
}

void add_options(CLI::App& command, AddressOptions& options) {
    command.add_flag("--pretty", options.pretty, "Indent the JSON");
    command
        .add_option("--contains", options.contains,
                    "Report for each prefix whether it contains this IP address")
        ->type_name("ADDRESS")
        ->check(CLI::Validator(problem_of_ip_address, ""));
    command.add_option("TEXT", options.texts,
                       "Addresses and prefixes; without one, the lines of standard input");
    command.footer(
        "A text that is no address has an \"error\" that says why, and the exit status is 1.\n\n"
        "Example: nuvctl address 02:00:00:00:00:01 fe80::1 192.168.1.77/24 --contains "
        "192.168.1.1");
}

void add_options(CLI::App& command, ChannelOptions& options) {
    auto* which = command.add_option_group("channel");
    which->add_option("--frequency", options.frequency, "Center frequency of the channel in kHz")
        ->check(decimal(1, 100'000'000));
    auto* band = which->add_option("--band", options.band, "Band in GHz")
                     ->check(CLI::IsMember({"2.4", "5", "6", "60"}));
    which->require_option(1);
    auto* number = command.add_option("--number", options.number, "Channel number within --band")
                       ->check(decimal(1, 255));
    band->needs(number);
    number->needs(band);
    command.add_option("--width", options.width, "Channel width in MHz")
        ->check(CLI::IsMember({"5", "10", "20", "40", "80", "80+80", "160", "320", "2160"}))
        ->capture_default_str();
    command.add_flag("--center", options.center,
                     "The number or frequency is that of a segment's center");
    command.footer(
        "A channel of 40 MHz in the 2.4 GHz band and one of 320 MHz may lie in two segments.\n"
        "80+80 finds the classes of secondary segments.\n\n"
        "Example: nuvctl channel --band 6 --number 37 --width 320");
}

void add_options(CLI::App& command, OpclassOptions& options) {
    command.add_option("--region", options.region, "Regulatory table")
        ->check(CLI::IsMember({"global", "europe"}))
        ->capture_default_str();
    command.add_flag("--table", options.table, "Print a table instead");
    command.add_option("CLASS", options.classes, "Only these classes")
        ->check(decimal(0, std::numeric_limits<std::uint32_t>::max()));
    command.footer(
        "Behaviors: 0 secondary segment of 80+80 MHz, 2 primary channel below, 3 above the "
        "secondary one.\n\n"
        "Example: nuvctl opclass 128 | jq -c .center_channels");
}

void add_options(CLI::App& command, ValidateOptions& options) {
    command.add_option("FILE", options.files, "JSON, - is standard input")->capture_default_str();
    command.footer(
        "Entry capabilities are not part of the JSON and are not checked. The exit status is 1 if\n"
        "anything is wrong.\n\n"
        "Example: echo '{\"channel\":36,\"frequency\":5200000}' | nuvctl validate");
}

void add_options(CLI::App& command, SendOptions& options) {
    command.add_option("ENDPOINT", options.endpoint, "Name of the receiver")->required();
    command
        .add_option("TEXT", options.text,
                    "Sent with a NUL behind it; - sends standard input as it is")
        ->required();
    command.footer("Example: nuvctl send mesh_controller 'hello'");
}

void add_options(CLI::App& command, EmitOptions& options) {
    command.add_option("NAME", options.event, "Name of the event")->required();
    command.add_option("TEXT", options.text,
                       "Data: sent with a NUL behind it; - sends standard input as it is");
    command.footer("Example: nuvctl emit station_left 02:00:00:00:00:01");
}

void add_options(CLI::App& command, EventsOptions& options) {
    command.add_option("NAME", options.names, "Only events of these names");
    command.footer("Runs until it is interrupted.\n\nExample: nuvctl events | jq -r .event");
}

void add_options(CLI::App& command, EndpointsOptions& options) {
    command.add_flag("--access", options.access, "Tell who may call each of them");
    command.footer("Example: nuvctl endpoints | jq -r 'select(.alive) | .name'");
}

void add_options(CLI::App& command, CmdOptions& options) {
    command.add_option("ENDPOINT", options.endpoint, "Name of the daemon's endpoint")->required();
    command.add_option("COMMAND", options.words,
                       "The words of one command; without them the lines of standard input");
    command.footer(
        "On a terminal with a prompt, history and completion. HELP lists the commands.\n\n"
        "Example: nuvctl cmd mesh_controller LOOPSHOW");
}

void add_options(CLI::App& command, LogOptions& options) {
    command.add_option("RING", options.ring, "Name of the ring")->required();
    command.add_flag("--follow", options.follow, "Go on with new lines until interrupted");
    command.footer("Example: nuvctl log mesh_controller --follow | grep WARN");
}

/// Adds a subcommand that calls `run` with the options that the parser reads.
template <class Options>
void add(CLI::App& parser, Action& action, const char* name, const char* description,
         int (*run)(const Options&)) {
    CLI::App& command = *parser.add_subcommand(name, description);
    const auto options = std::make_shared<Options>();
    add_options(command, *options);
    take_values_literally(command);
    command.callback([=, &action] { action = [=] { return run(*options); }; });
}

/// What is wrong with the command line.
std::string problem(const CLI::App& parser, const CLI::Error& error) {
    auto unexpected = parser.remaining();
    if (!parser.get_subcommands().empty() || unexpected.empty() ||
        unexpected.front().starts_with('-')) {
        return error.what();
    }
    unshield(unexpected.front());
    return "unknown subcommand '" + unexpected.front() + "'";
}

}  // namespace

std::unique_ptr<CLI::App> make_parser(Action& action) {
    auto parser = std::make_unique<CLI::App>(
        "Looks at stations, frames, channels, addresses and daemons of a Wi-Fi mesh, and makes "
        "frames.",
        "nuvctl");
    parser->set_version_flag("--version", "nuvctl " NUVCTL_VERSION);
    parser->set_help_all_flag("--help-all", "Print the help of every sub-command too and exit");
    parser->footer(
        "Results go to standard output, everything else to standard error. Exit status: 0, or 1 "
        "for a\n"
        "failure, 2 for wrong usage. See nuvctl(1).\n\n"
        "Example: nuvctl decode --summary home.pcap");
    parser->failure_message([](const CLI::App* app, const CLI::Error& error) {
        return "nuvctl: " + to_printable(problem(*app, error)).text +
               "\nRun with --help for more information.\n";
    });
    parser->require_subcommand(1);
    add(*parser, action, "decode",
        "Decode (re)association requests, measurement and neighbor reports and BSS transition\n"
        "management frames of capture files: one JSON object per line",
        run_decode);
    add(*parser, action, "encode", "Turn the JSON of decode back into frames", run_encode);
    add(*parser, action, "address",
        "Classify MAC addresses, IP addresses and prefixes: one JSON object per line", run_address);
    add(*parser, action, "channel",
        "Print a channel's number, frequency, operating classes and segments as JSON", run_channel);
    add(*parser, action, "opclass", "Print operating classes: one JSON object per line",
        run_opclass);
    add(*parser, action, "validate",
        "Check channel lists, entries and infos in JSON: one JSON object per finding",
        run_validate);
    add(*parser, action, "send", "Send a message to an endpoint", run_send);
    add(*parser, action, "emit", "Send an event to all who asked for it", run_emit);
    add(*parser, action, "events", "Print events as they come: one JSON object a line", run_events);
    add(*parser, action, "endpoints", "Print the endpoints of this machine: one JSON object a line",
        run_endpoints);
    add(*parser, action, "cmd", "Give a daemon debug commands and print its answers", run_cmd);
    add(*parser, action, "log", "Print a ring of log lines, also one that outlived its process",
        run_log);
    return parser;
}

namespace {

/// The exit status.
int parse_and_run(int argc, const char* const* argv) {
    constexpr int usage_error = 2;
    Action action;
    const auto parser = make_parser(action);
    try {
        parser->parse(shielded_arguments(argc, argv));
    } catch (const CLI::ParseError& error) {
        return parser->exit(error) == 0 ? 0 : usage_error;
    }
    return action();
}

}  // namespace

int run(int argc, const char* const* argv) {
    constexpr int failure = 1;
    try {
        const int status = parse_and_run(argc, argv);
        if (!std::cout.flush()) {
            throw OutputError("-");
        }
        return status;
    } catch (const OutputError& error) {
        if (!error.is_broken_pipe()) {
            report(error.what());
        }
        return failure;
    }
}

}  // namespace nuvctl
