// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <fstream>

#include "tests/support/generated_files.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {
namespace {

TEST(GeneratedFiles, AreWhatTheVectorsMakeThem) {
    const std::filesystem::path root = NUV_SOURCE_DIR;
    for (const auto& [name, octets] : generated_files()) {
        std::ifstream in(root / name, std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(in), {}};
        EXPECT_TRUE(in.is_open() && content == to_string(octets))
            << name << " is out of date: run nuv_generate_files on " << root;
    }
}

}  // namespace
}  // namespace nuv::test
