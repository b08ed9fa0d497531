// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace nuvctl {

/// Flushes standard output, then prints "nuvctl: ", `message` and a newline on standard error.
void report(const std::string& message);

}  // namespace nuvctl
