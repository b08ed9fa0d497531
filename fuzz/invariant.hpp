// SPDX-License-Identifier: Apache-2.0
#pragma once

// What nearly every fuzz target includes.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace nuv::fuzz {

/// Ends the program unless `holds`, as a fuzzer wants it; `what` says what was wrong.
inline void require(bool holds, std::string_view what) {
    if (!holds) {
        std::cerr << "invariant broken: " << what << std::endl;
        std::abort();
    }
}

/// The same for a check that returns what is wrong.
inline void require_well(std::string_view problem) { require(problem.empty(), problem); }

}  // namespace nuv::fuzz
