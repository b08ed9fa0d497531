// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <iostream>
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
