// SPDX-License-Identifier: Apache-2.0
#include "support/generated_files.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace nuv::test {
namespace {

TEST(GeneratedFiles, AreWhatTheVectorsMakeThem) {
    const auto root = std::filesystem::path(NUV_TEST_VECTORS).parent_path().parent_path();
    for (const auto& [name, octets] : generated_files()) {
        std::ifstream in(root / name, std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(in), {}};
        EXPECT_TRUE(in.is_open() && content == to_string(octets))
            << name << " is out of date: run nuv_generate_files (target of tests/) on " << root;
    }
}

}  // namespace
}  // namespace nuv::test
