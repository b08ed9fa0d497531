// SPDX-License-Identifier: Apache-2.0
// The outputs of the reference logger that leave the process.
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include "nuv_platform/clog.h"
#include "nuv_platform/clog_ring.h"
#include "tests/support/test.hpp"

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

/// Reads a ring as clog_ring.h tells it.
std::string read_ring(const std::string& name) {
    const int fd = ::shm_open((CLOGGER_RING_PREFIX + name).c_str(), O_RDONLY, 0);
    struct stat status {};
    if (fd < 0 || ::fstat(fd, &status) != 0) {
        return "no ring";
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t got = ::pread(fd, bytes.data(), bytes.size(), 0);
    ::close(fd);
    clogger_ring ring{};
    std::memcpy(&ring, bytes.data(), sizeof ring);
    if (got != status.st_size || bytes.size() != sizeof ring + ring.size ||
        std::memcmp(ring.magic, CLOGGER_RING_MAGIC, sizeof ring.magic) != 0) {
        return "damaged";
    }
    std::string text;
    for (auto at = ring.begun < ring.size ? 0 : ring.begun - ring.size; at < ring.written; ++at) {
        text += bytes[sizeof ring + static_cast<std::size_t>(at % ring.size)];
    }
    return text;
}

class ClogOutputs : public testing::Test {
public:
    ClogOutputs() { fs::create_directory(folder); }
    ~ClogOutputs() override {
        clogger_rm_file(logger, file.c_str());
        clogger_rm_shringbuf(logger, name.c_str());
        clogger_disable_stderr(logger);
        fs::remove_all(folder);
    }

protected:
    void log(const std::string& text) { clogger__info(logger, "f", "g", 1, "%s", text.c_str()); }

    static std::string content(const fs::path& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    const std::string name = std::string("nuvtest.") + std::to_string(::getpid()) + "." +
                             testing::UnitTest::GetInstance()->current_test_info()->name();
    const fs::path folder = fs::temp_directory_path() / name;
    const std::string file = folder / "log.txt";
    clogger* const logger = clogger_alloc(name.c_str());
};

TEST_F(ClogOutputs, FreshProcessLogsToStderrAtLevelInfo) {
    clogmod* const module = clogmod_get_or_alloc((name + ".module").c_str());
    testing::internal::CaptureStderr();
    clogmod__info(module, "f", "g", 1, "seen");
    clogmod__debug(module, "f", "g", 1, "masked");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::MatchesRegex("[0-9]{4}-[01][0-9]-[0-3][0-9]T[0-9:]{8}[.][0-9]{3}Z INFO " +
                                      name + ".module: seen\n"));
}

TEST_F(ClogOutputs, FileIsAppendedToAndSetAsideWhenFull) {
    const auto older = [this](int n) { return folder / ("log." + std::to_string(n) + ".txt"); };
    std::ofstream(file) << "before\n";
    const clogger_backup_style two{.files = 2, .rotate_on_open = 0};
    ASSERT_EQ(clogger_add_file(logger, file.c_str(), 16, &two, 31, CLOGGER_FIELD_NONE), 0);
    for (const char* text : {"1", "second", "third.........", "fourth........"}) {
        log(text);
    }
    EXPECT_EQ(content(file), "fourth........\n");
    EXPECT_EQ(content(older(1)), "third.........\n");
    EXPECT_EQ(content(older(2)), "before\n1\nsecond\n");
    EXPECT_EQ(clogger_rm_file(logger, file.c_str()), 0);

    const clogger_backup_style afresh{.files = 1, .rotate_on_open = 1};
    ASSERT_EQ(clogger_add_file(logger, file.c_str(), 16, &afresh, 31, CLOGGER_FIELD_NONE), 0);
    EXPECT_EQ(content(file), "");
    for (int i = 0; i < 2; ++i) {  // an empty file is not set aside, also one emptied by others
        fs::resize_file(file, 0);
        log("longer than the limit");
        EXPECT_EQ(content(file), "longer than the limit\n");
    }
    EXPECT_EQ(content(older(1)), "fourth........\n");
    EXPECT_EQ(clogger_rm_file(logger, file.c_str()), 0);

    const clogger_backup_style none{.files = 0, .rotate_on_open = 0};
    ASSERT_EQ(clogger_add_file(logger, file.c_str(), 16, &none, 31, CLOGGER_FIELD_NONE), 0);
    log("alone");
    EXPECT_EQ(content(file), "alone\n");
    EXPECT_EQ(content(older(1)), "fourth........\n");
    EXPECT_EQ(clogger_rm_file(logger, file.c_str()), 0);
}

TEST_F(ClogOutputs, ControlOctetsAreEscapedExceptANewlineThatBeginsTheText) {
    const std::pair<const char*, const char*> rows[] = {
        {"plain h\u00fctte \\ \"", "plain h\u00fctte \\ \""},
        {"net\nERROR m: forged", "net\\x0aERROR m: forged"},
        {"\x1b[2J\t\r\x7f", "\\x1b[2J\\x09\\x0d\\x7f"},
        {"\npiece\n", "\npiece\\x0a"},
        {"\n\n", "\n\\x0a"},
        {"", ""},
    };
    Lines raw;
    const auto keep = [](void* ctx, const char* line) {
        static_cast<Lines*>(ctx)->emplace_back(line);
    };
    ASSERT_EQ(clogger_add_function(logger, keep, &raw, 0, 31, 0), 0);
    ASSERT_EQ(clogger_add_file(logger, file.c_str(), 0, nullptr, 31, CLOGGER_FIELD_NONE), 0);
    ASSERT_EQ(clogger_add_shringbuf(logger, name.c_str(), 1024, 31, CLOGGER_FIELD_NONE), 0);
    ASSERT_EQ(clogger_enable_stderr(logger, 31, CLOGGER_FIELD_LEVEL), 0);
    std::string lines;
    for (const auto& [text, line] : rows) {
        testing::internal::CaptureStderr();
        log(text);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string("INFO: ") + line + '\n');
        EXPECT_EQ(raw.back(), text);
        lines.append(line).append("\n");
    }
    EXPECT_EQ(content(file), lines);
    EXPECT_EQ(read_ring(name), lines);
    clogger_rm_function(logger, keep, &raw);
}

TEST_F(ClogOutputs, FileThatCannotBeOpenedIsRefusedWithTheReason) {
    const std::string path = folder / "missing" / "log.txt";
    EXPECT_EQ(clogger_add_file(logger, path.c_str(), 0, nullptr, 31, 0), -ENOENT);
    EXPECT_EQ(clogger_add_file(logger, folder.c_str(), 0, nullptr, 31, 0), -EISDIR);
    EXPECT_EQ(clogger_rm_file(logger, path.c_str()), -ENOENT);
}

TEST_F(ClogOutputs, FileThatCannotBeReopenedLosesLinesOnly) {
    ASSERT_EQ(clogger_add_file(logger, file.c_str(), 100, nullptr, 31, CLOGGER_FIELD_NONE), 0);
    log(std::string(90, 'a'));
    const fs::path aside = folder.string() + ".aside";
    fs::rename(folder, aside);
    std::ofstream(folder) << "in the way";
    log(std::string(90, 'b'));  // closes the full file, cannot open the next
    log("lost");
    fs::remove(folder);
    fs::rename(aside, folder);
    log("back");
    EXPECT_EQ(content(file), std::string(90, 'a') + "\nback\n");
}

TEST_F(ClogOutputs, BrokenPipeLosesTheRecordAndLeavesSigpipeAlone) {
    static volatile std::sig_atomic_t raised = 0;
    const auto handler = std::signal(SIGPIPE, [](int) { raised = 1; });
    sigset_t pipe;
    sigset_t set;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);

    // Two outputs without a reader: stderr, and a named pipe.
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const int own_stderr = ::dup(STDERR_FILENO);
    ::dup2(ends[1], STDERR_FILENO);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    int reader = ::open(file.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(clogger_enable_stderr(logger, 31, CLOGGER_FIELD_NONE), 0);
    EXPECT_EQ(clogger_add_file(logger, file.c_str(), 0, nullptr, 31, CLOGGER_FIELD_NONE), 0);
    for (const int end : {ends[0], ends[1], reader}) {
        ::close(end);
    }

    for (const int before : {0, 1, 2}) {  // not blocked, blocked, blocked and pending
        if (before == 1) {
            ::pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
        } else if (before == 2) {
            std::raise(SIGPIPE);
        }
        log("lost");
        ::pthread_sigmask(SIG_BLOCK, nullptr, &set);
        EXPECT_EQ(sigismember(&set, SIGPIPE), before > 0 ? 1 : 0) << before;
        ::sigpending(&set);
        EXPECT_EQ(sigismember(&set, SIGPIPE), before > 1 ? 1 : 0) << before;
    }
    EXPECT_EQ(raised, 0);
    ::pthread_sigmask(SIG_UNBLOCK, &pipe, nullptr);
    EXPECT_EQ(raised, 1);

    reader = ::open(file.c_str(), O_RDONLY | O_NONBLOCK);
    log("read");
    std::string text(100, '\0');
    text.resize(
        static_cast<std::size_t>(std::max<ssize_t>(0, ::read(reader, text.data(), text.size()))));
    EXPECT_EQ(text, "read\n");
    ::close(reader);
    ::dup2(own_stderr, STDERR_FILENO);
    ::close(own_stderr);
    std::signal(SIGPIPE, handler);
}

TEST_F(ClogOutputs, LineIsWrittenWholeWhileAnotherThreadInterrupts) {
    struct sigaction interrupt {};
    struct sigaction before {};
    interrupt.sa_handler = [](int) {};  // without SA_RESTART
    ::sigaction(SIGUSR1, &interrupt, &before);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    const std::string line = std::string(300'000, 'x') + "\n";  // more than a pipe holds
    std::string text;
    std::thread reader([&, writer = ::pthread_self()] {
        const int fd = ::open(file.c_str(), O_RDONLY);
        char part[1000];  // less than a page: most writes are interrupted before they begin
        while (text.size() < line.size()) {
            const ssize_t count = ::read(fd, part, sizeof part);
            if (count <= 0) {
                break;
            }
            text.append(part, static_cast<std::size_t>(count));
            ::pthread_kill(writer, SIGUSR1);
        }
        ::close(fd);
    });
    EXPECT_EQ(clogger_add_file(logger, file.c_str(), 0, nullptr, 31, CLOGGER_FIELD_NONE), 0);
    log(line.substr(0, line.size() - 1));
    EXPECT_EQ(clogger_rm_file(logger, file.c_str()), 0);
    reader.join();
    EXPECT_TRUE(text == line) << text.size();
    ::sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(ClogOutputs, RingKeepsTheNewestLines) {
    ASSERT_EQ(clogger_add_shringbuf(logger, name.c_str(), 1024, 31, CLOGGER_FIELD_NONE), 0);
    std::string all;
    for (int i = 0; i < 300; ++i) {
        const std::string line(static_cast<std::size_t>(i % 37), static_cast<char>('a' + i % 26));
        log(line);
        all += line + '\n';
        ASSERT_EQ(read_ring(name),
                  all.substr(all.size() - std::min<std::size_t>(all.size(), 1024)));
    }
    log(std::string(3000, 'x'));
    EXPECT_EQ(read_ring(name), std::string(1023, 'x') + '\n');
    EXPECT_EQ(clogger_rm_shringbuf(logger, name.c_str()), 0);
    EXPECT_EQ(read_ring(name), "no ring");
}

/// The result of `function` in a child; a child that hangs is ended.
int in_child(auto function, pid_t (*make)() = &::fork) {
    const pid_t child = make();
    if (child == 0) {
        ::alarm(10);
        ::_exit(-function());
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? -WEXITSTATUS(status) : 1;
}

TEST_F(ClogOutputs, ChildrenForkedWhileThreadsLogMayLog) {
    ASSERT_EQ(clogger_add_file(logger, file.c_str(), 0, nullptr, 31, CLOGGER_FIELD_NONE), 0);
    std::atomic<bool> stop{false};
    std::thread busy([&] {
        for (int i = 0; !stop; ++i) {
            log("parent");
            clogger_alloc((name + std::to_string(i % 9)).c_str());
        }
    });
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(in_child([&] {
                      log("child");
                      clogger_alloc((name + ".child").c_str());
                      return clogger_rm_file(logger, file.c_str());
                  }),
                  0);
    }
    stop = true;
    busy.join();
    std::istringstream lines(content(file));
    std::map<std::string, int> count;
    for (std::string line; std::getline(lines, line);) {
        ++count[line];
    }
    EXPECT_EQ(count["child"], 20);
    EXPECT_EQ(count.size(), 2U);
}

TEST_F(ClogOutputs, CallbacksOfTwoThreadsMayForkAndTheirChildrenLogNothing) {
    const auto fork_and_log = [](void* results, const char* /*line*/) {
        static_cast<std::vector<int>*>(results)->push_back(in_child([] {
            for (const char* part : {"a", "b"}) {
                clogger__err(clogger_get(part), "f", "g", 1, "x");
            }
            return clogger_enable_stderr(clogger_get("a"), 0, 0);
        }));
    };
    const auto run = [&](clogger* own) {
        std::vector<int> results;
        EXPECT_EQ(clogger_add_function(own, fork_and_log, &results, 0, 31, 0), 0);
        for (int i = 0; i < 10; ++i) {
            clogger__err(own, "f", "g", 1, "x");
        }
        EXPECT_EQ(clogger_rm_function(own, fork_and_log, &results), 0);
        EXPECT_EQ(results, std::vector<int>(10, -EDEADLK));
    };
    clogger* const a = clogger_alloc("a");
    clogger* const b = clogger_alloc("b");
    std::thread other(run, a);
    run(b);
    other.join();
}

TEST_F(ClogOutputs, RingBelongsToTheProcessThatAddedItAndNotToItsChildren) {
    ASSERT_EQ(clogger_add_shringbuf(logger, name.c_str(), 1024, 31, CLOGGER_FIELD_NONE), 0);
    log("parent");
    EXPECT_EQ(in_child([&] {
                  log("child");
                  const int again = clogger_add_shringbuf(logger, name.c_str(), 1024, 31, 0);
                  return again == -EBUSY ? clogger_rm_shringbuf(logger, name.c_str()) : again;
              }),
              -ENOENT);
    EXPECT_EQ(read_ring(name), "parent\n");
    // A child that was made behind the fork handlers' back, as by clone().
    EXPECT_EQ(in_child(
                  [&] {
                      log("child");
                      return clogger_rm_shringbuf(logger, name.c_str());
                  },
                  &::_Fork),
              0);
    EXPECT_EQ(read_ring(name), "parent\n");
    EXPECT_EQ(clogger_rm_shringbuf(logger, name.c_str()), 0);
    EXPECT_EQ(read_ring(name), "no ring");
}

TEST_F(ClogOutputs, RingOutlivesItsProcessAndIsContinued) {
    const auto run = [&](uint32_t size, const char* text) {
        return in_child([&] {
            const int result =
                clogger_add_shringbuf(logger, name.c_str(), size, 31, CLOGGER_FIELD_NONE);
            log(text);
            return result;
        });
    };
    EXPECT_EQ(run(1024, "first"), 0);
    EXPECT_EQ(run(1024, "second"), 0);
    EXPECT_EQ(read_ring(name), "first\nsecond\n");
    EXPECT_EQ(run(2048, "larger"), 0);
    EXPECT_EQ(read_ring(name), "larger\n");

    ASSERT_EQ(clogger_add_shringbuf(logger, name.c_str(), 2048, 31, 0), 0);
    clogger* const other = clogger_alloc((name + ".other").c_str());
    EXPECT_EQ(clogger_add_shringbuf(other, name.c_str(), 2048, 31, 0), -EBUSY);
    EXPECT_EQ(read_ring(name), "larger\n");
}

}  // namespace
