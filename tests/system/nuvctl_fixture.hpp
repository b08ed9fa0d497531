// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace nuv::test {

struct Outcome {
    int status;
    std::string out, err;
};

/// A test of the built nuvctl, with a folder of its own.
class NuvctlTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    /// Runs `nuvctl ARGUMENTS` by a shell, in a folder of its own.
    Outcome nuvctl(const std::string& arguments) const {
        const std::string command =
            "cd '" + folder_ + "' && ('" NUVCTL "' " + arguments + ") >out 2>err";
        const int status = std::system(command.c_str());
        return {WEXITSTATUS(status), content("out"), content("err")};
    }
    std::string content(const std::string& name) const {
        std::ifstream in(folder_ + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << text;
    }
    const std::string folder_ = testing::TempDir() + "nuvctl_" + std::to_string(::getpid());
};

inline bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace nuv::test
