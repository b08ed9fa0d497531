// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

namespace CLI {
class App;
}

namespace nuvctl {

/// The parser of the command line. Parsing runs the subcommand, which leaves its exit status in
/// `status`.
std::unique_ptr<CLI::App> make_parser(int& status);

/// Parses the command line and runs the subcommand. Returns the exit status: 0, 1 for a failure, 2
/// for wrong usage.
int run(int argc, const char* const* argv);

}  // namespace nuvctl
