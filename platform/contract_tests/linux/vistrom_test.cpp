// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/vistrom.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::string answer(const char* key) {
    const char* const value = vistrom_getenv(key);
    return value != nullptr ? value : "no value";
}

TEST(VistromLinux, FileOfTheBootEnvironment) {
    const std::string path =
        std::filesystem::temp_directory_path() / ("nuvtest." + std::to_string(::getpid()));
    std::ofstream(path) << "maca=00:11:22:33:44:55\nempty=\nbootargs=a=b c\nmaca2=x\nno line\n"
                           "twice=1\ntwice=2\nlast=no newline";
    ::setenv("NUV_BOOT_ENV", path.c_str(), 1);
    const struct {
        const char* key;
        const char* value;
    } rows[] = {{"maca", "00:11:22:33:44:55"}, {"empty", ""},
                {"bootargs", "a=b c"},         {"twice", "2"},
                {"mac", "no value"},           {"no line", "no value"},
                {"last", "no newline"},        {"PATH", "no value"},
                {"bootargs=a", "no value"},    {"", "no value"},
                {nullptr, "no value"}};
    for (const auto& row : rows) {
        EXPECT_EQ(answer(row.key), row.value) << (row.key != nullptr ? row.key : "NULL");
    }
    std::filesystem::remove(path);
    EXPECT_EQ(answer("maca"), "no value") << "nothing stands in for a file that cannot be read";
    ::unsetenv("NUV_BOOT_ENV");
}

TEST(VistromLinux, EnvironmentOfTheProcess) {
    if (std::filesystem::exists("/etc/fw_env.config")) {
        GTEST_SKIP() << "this machine has the environment of a boot loader";
    }
    ::setenv("NUVTEST", "here", 1);
    EXPECT_EQ(answer("NUVTEST"), "here");
    ::unsetenv("NUVTEST");
    EXPECT_EQ(answer("NUVTEST"), "no value");
}

}  // namespace
