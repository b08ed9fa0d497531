// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/chunk_io_manipulator.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "tests/support/test.hpp"

namespace nuv::logging {
namespace {

TEST(ChunkIOManipulator, StoresItsSizeInAnyStream) {
    std::ostringstream a;
    std::ostringstream b;
    a << ChunkIOManipulator(0xFFFFFFFF) << "text";
    EXPECT_EQ(static_cast<std::uint32_t>(a.iword(ChunkIOManipulator::xalloc_value())), 0xFFFFFFFF);
    EXPECT_EQ(b.iword(ChunkIOManipulator::xalloc_value()), 0);
    EXPECT_EQ(a.str(), "text");
}

TEST(ChunkTable, IsReadAndWrittenByTwoThreads) {
    const auto work = [](const std::string& own) {
        for (std::uint32_t i = 1; i <= 2000; ++i) {
            set_default_clogger_chunking(own + std::to_string(i % 50), i);
            set_default_clogger_chunking("shared", i);
            EXPECT_EQ(get_default_clogger_chunking(own + std::to_string(i % 50)), i);
            EXPECT_NE(get_default_clogger_chunking("shared"), 0U);
        }
    };
    std::thread other(work, "other");
    work("own");
    other.join();
    EXPECT_EQ(get_default_clogger_chunking("never set"), 0U);
}

TEST(ChunkTable, IsUnlockedInChildrenForkedWhileAThreadUsesIt) {
    std::atomic<bool> stop{false};
    std::thread busy([&] {
        while (!stop) {
            set_default_clogger_chunking("a name that needs memory", 0);
        }
    });
    for (int i = 0; i < 50; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(10);
            ::_exit(static_cast<int>(get_default_clogger_chunking("never set")));
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    stop = true;
    busy.join();
}

}  // namespace
}  // namespace nuv::logging
