// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/daemon.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

// A unit test of a daemon depends on it: its process stays what it is.
TEST(DaemonContract, UnderASupervisorNothingIsForkedOrClosed) {
    const pid_t process = ::getpid();
    const std::filesystem::path folder = std::filesystem::current_path();
    ::setenv("NOTIFY_SOCKET", "@nobody", 1);
    EXPECT_EQ(daemon_start(0, 0), 0);
    daemon_start_failed();
    ::unsetenv("NOTIFY_SOCKET");
    daemon_ready();
    EXPECT_EQ(::getpid(), process);
    EXPECT_EQ(std::filesystem::current_path(), folder);
}
