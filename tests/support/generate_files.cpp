// SPDX-License-Identifier: Apache-2.0
// Writes the files that are made of the test vectors.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tests/support/generated_files.hpp"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " ROOT_OF_THE_REPOSITORY\n";
        return 2;
    }
    for (const auto& [name, octets] : nuv::test::generated_files()) {
        const std::filesystem::path path = std::filesystem::path(argv[1]) / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream out(path, std::ios::binary);
        out << nuv::test::to_string(octets) << std::flush;
        if (!out) {
            std::cerr << "cannot write " << path << '\n';
            return 1;
        }
    }
}
