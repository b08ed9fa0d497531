// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

namespace CLI {
class App;
}

namespace nuvctl {

/// Runs a subcommand with its options.
using Action = std::function<int()>;

/// The parser of the command line, with all subcommands and options. Parsing sets `action` to what
/// the command line asks for.
std::unique_ptr<CLI::App> make_parser(Action& action);

/// Parses the command line and runs the subcommand. Returns the exit status: 0, 1 for a failure, 2
/// for wrong usage. Afterwards standard output is flushed. A failed write is a failure, and is
/// reported unless the reader has closed the pipe.
int run(int argc, const char* const* argv);

}  // namespace nuvctl
