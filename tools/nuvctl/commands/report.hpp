// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace nuvctl {

/// Flushes standard output, then prints "nuvctl: ", `message` and a newline on standard error.
void report(const std::string& message);

/// What to add to a message about a frequency in kHz: ": MHz? write 5180000" for 5180, and nothing
/// unless the number is a radio frequency in MHz.
std::string megahertz_hint(std::int64_t khz);

}  // namespace nuvctl
