// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace CLI {
class App;
}

namespace nuvctl {

// Each adds one sub-command to the command line. When it is the one that was given, it runs while
// the command line is parsed and leaves the exit status in `status`: 0, or 1 for a failure.

void add_decode(CLI::App& nuvctl, int& status);
void add_encode(CLI::App& nuvctl, int& status);
void add_address(CLI::App& nuvctl, int& status);
void add_channel(CLI::App& nuvctl, int& status);
void add_opclass(CLI::App& nuvctl, int& status);
void add_validate(CLI::App& nuvctl, int& status);

}  // namespace nuvctl
