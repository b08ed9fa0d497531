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

/// Sets the function that the subcommand runs. `run` returns the exit status and may throw
/// OutputError. Afterwards standard output is flushed. A failed write makes the exit status 1 and is
/// reported, unless the reader has closed the pipe.
void set_action(CLI::App& command, int& status, std::function<int()> run);

/// Flushes standard output, then prints a line on standard error.
void report(const std::string& message);

}  // namespace nuvctl
