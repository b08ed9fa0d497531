// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace nuvctl {

// Each adds one subcommand to the command line. When it is the one that was given, it runs while
// the command line is parsed and leaves the exit status in `status`: 0, or 1 for a failure.

void add_decode(CLI::App& nuvctl, int& status);
void add_encode(CLI::App& nuvctl, int& status);
void add_address(CLI::App& nuvctl, int& status);
void add_channel(CLI::App& nuvctl, int& status);
void add_opclass(CLI::App& nuvctl, int& status);
void add_validate(CLI::App& nuvctl, int& status);

/// Makes `run` what a subcommand does. It returns the exit status and may throw OutputError. What it
/// wrote to standard output is flushed. Output that cannot be written is reported, unless its reader
/// closed the pipe, and makes the exit status 1.
void set_action(CLI::App& command, int& status, std::function<int()> run);

/// Prints a line on standard error, behind what was written to standard output so far.
void report(const std::string& message);

}  // namespace nuvctl
