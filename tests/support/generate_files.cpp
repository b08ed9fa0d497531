// SPDX-License-Identifier: Apache-2.0
// Writes the files that are made of the test vectors; with --check only compares them.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string_view>

#include "tests/support/generated_files.hpp"

int main(int argc, char** argv) {
    const bool check = argc == 3 && std::string_view(argv[2]) == "--check";
    if (argc != 2 && !check) {
        std::cerr << "usage: " << argv[0] << " ROOT_OF_THE_REPOSITORY [--check]\n";
        return 2;
    }
    bool failed = false;
    for (const auto& [name, octets] : nuv::test::generated_files()) {
        const std::filesystem::path path = std::filesystem::path(argv[1]) / name;
        const std::string content = nuv::test::to_string(octets);
        if (!check) {
            std::filesystem::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << content;
        }
        std::ifstream in(path, std::ios::binary);
        if (std::string(std::istreambuf_iterator<char>(in), {}) != content) {
            std::cerr << path << (check ? " is out of date\n" : " cannot be written\n");
            failed = true;
        }
    }
    return failed ? 1 : 0;
}
