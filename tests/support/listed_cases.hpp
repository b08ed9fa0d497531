// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <string>
#include <vector>

namespace nuv::test {

/// What is expected of a call.
struct ListedCase {
    std::string call, expected;
};

/// The rows of a file in tests/vectors: the call, a tab, what is expected; `#` begins a comment.
inline std::vector<ListedCase> listed_cases(const std::string& name) {
    std::ifstream file(NUV_SOURCE_DIR "/tests/vectors/" + name);
    std::vector<ListedCase> cases;
    for (std::string line; std::getline(file, line);) {
        const std::size_t tab = line.find('\t');
        if (tab != std::string::npos && line[0] != '#') {
            cases.push_back({line.substr(0, tab), line.substr(tab + 1)});
        }
    }
    return cases;
}

}  // namespace nuv::test
