// SPDX-License-Identifier: Apache-2.0
// A daemon and whoever supervises it: the process that started it, or a service manager.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "nuv_platform/aicmd.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/csock.h"
#include "nuv_platform/daemon.h"
#include "nuv_platform/slab.h"
#include "nuv_platform/watchdog.h"
#include "platform/linux/start_handshake.hpp"

namespace {

using std::chrono::milliseconds;

/// The exit status of a process that runs `body`, -1 when a signal ended it.
int status_of(const std::function<void()>& body) {
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        ::_exit(99);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(DaemonStart, TheStarterWaitsForTheDaemon) {
    const struct {
        const char* name;
        std::function<void()> daemon;
        int status;
    } rows[] = {
        {"ready", [] { daemon_ready(); }, 0},
        {"ready twice, the starter gone", [] { daemon_ready(), ::usleep(2000), daemon_ready(); },
         0},
        {"failed", [] { daemon_start_failed(); }, 1},
        {"ended", [] { ::_exit(0); }, 1},
        {"killed", [] { ::raise(SIGKILL); }, 1},
        {"killed while a child of its own lives on",
         [] {
             if (::fork() == 0) {
                 ::usleep(2'000'000);
                 ::_exit(0);
             }
             ::raise(SIGKILL);
         },
         1},
        {"started again", [] { daemon_start(1, 1) == -EALREADY ? daemon_ready() : void(); }, 0},
    };
    for (const auto& row : rows) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(status_of([&row] {
                      if (daemon_start(1, 1) == 0) {
                          row.daemon();
                      }
                  }),
                  row.status)
            << row.name;
        EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(1500)) << row.name;
    }
}

TEST(DaemonStart, ASilentDaemonIsKilled) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::pause();
        ::_exit(0);
    }
    ::close(ends[1]);
    EXPECT_EQ(nuv::platform::wait_for_daemon(ends[0], child, milliseconds(10)), 1);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    ::close(ends[0]);
}

TEST(DaemonStart, KeepsTheFolderAndTheStreamsThatItIsAskedTo) {
    const std::filesystem::path folder = std::filesystem::current_path();
    for (const bool keep : {false, true}) {
        std::array<int, 2> results{};
        ASSERT_EQ(::pipe2(results.data(), O_CLOEXEC), 0);
        const pid_t starter = ::fork();
        if (starter == 0) {
            ::close(STDIN_FILENO);  // the numbers of the streams are not for others
            const int output = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
            ::dup2(output, STDOUT_FILENO);
            if (daemon_start(keep ? 1 : 0, keep ? 1 : 0) == 0) {
                const std::array<bool, 4> found = {
                    ::write(STDOUT_FILENO, "x", 1) < 0,
                    ::read(STDIN_FILENO, results.data(), 1) < 0,
                    std::filesystem::current_path() == folder,
                    ::getsid(0) == ::getpid(),
                };
                EXPECT_EQ(::write(results[1], found.data(), sizeof found), 4);
                daemon_ready();
            }
            ::_exit(99);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(starter, &status, 0), starter);
        std::array<bool, 4> found{};
        ASSERT_EQ(::read(results[0], found.data(), sizeof found), 4);
        EXPECT_EQ(found, (std::array<bool, 4>{keep, keep, keep, true}));
        EXPECT_EQ(WEXITSTATUS(status), 0);
        ::close(results[0]);
        ::close(results[1]);
    }
}

// Peers see who called listen() last, and the lock file and the log ring name their owner.
TEST(DaemonStart, TheDaemonOwnsWhatTheStarterHad) {
    const std::string name = "nuvtest." + std::to_string(::getpid());
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
    ::setenv("NUV_RUNTIME_DIR", folder.c_str(), 1);
    clogger* const logger = clogger_alloc(name.c_str());
    static bool stop = false;
    const aicmd_command command{"stop",
                                [](aicmd_session* session, int, char**) {
                                    stop = true;
                                    return aicmd_printf(session, "%d\n", ::getpid()) > 0 ? 0 : -EIO;
                                },
                                ""};
    EXPECT_EQ(
        status_of([&] {
            aicmd_listener listener{"nuvtest", &command, 1, {0, 0}};
            csock_init();
            nuvipc* const ipc = nuvipc_create("nuvtest");
            clogger_add_shringbuf(logger, name.c_str(), 1024, 31, CLOGGER_FIELD_NONE);
            if (aicmd_listen_start(ipc, &listener, 0, 0, 0, 0, 0) != 0 || daemon_start(1, 1) != 0) {
                ::_exit(98);
            }
            clogger__info(logger, "", "", 0, "line of the daemon");
            daemon_ready();
            for (int passes = 0; !stop && passes < 100; ++passes) {
                csock_select_with_msecs(20);
            }
            nuvipc_destroy(ipc);
            clogger_rm_shringbuf(logger, name.c_str());
            ::_exit(0);
        }),
        0);
    const std::filesystem::path ring = "/dev/shm/nuvlog." + name;
    std::ostringstream text;
    text << std::ifstream(ring).rdbuf();
    EXPECT_NE(text.str().find("line of the daemon\n"), std::string::npos);
    pid_t owner = 0;
    std::ifstream(folder / "nuvtest.lock") >> owner;

    const int client = aicmd_connect("nuvtest");
    ucred peer{};
    socklen_t size = sizeof peer;
    EXPECT_EQ(::getsockopt(client, SOL_SOCKET, SO_PEERCRED, &peer, &size), 0);
    EXPECT_EQ(owner, peer.pid);
    EXPECT_EQ(::write(client, "stop\n", 5), 5);
    std::string answer;
    std::array<char, 256> octets{};
    for (ssize_t count = 0; (count = ::read(client, octets.data(), octets.size())) > 0;) {
        answer.append(octets.data(), static_cast<std::size_t>(count));
    }
    EXPECT_EQ(answer, std::to_string(peer.pid) + "\nOK\n");
    ::close(client);
    for (int i = 0; i < 100 && std::filesystem::exists(ring); ++i) {
        ::usleep(1000);
    }
    EXPECT_FALSE(std::filesystem::exists(ring)) << "the daemon removes what it owns";
    std::filesystem::remove_all(folder);
    ::unsetenv("NUV_RUNTIME_DIR");
}

/// A service manager's socket. The environment names it while it lives.
class Supervised : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(csock_init(), 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string name = "@nuvtest." + std::to_string(::getpid());
        std::memcpy(address.sun_path, name.data(), name.size());
        address.sun_path[0] = '\0';
        ASSERT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address),
                         static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size())),
                  0);
        ::setenv("NOTIFY_SOCKET", name.c_str(), 1);
    }
    void TearDown() override {
        watchdog_csock_exit();
        csock_exit();
        ::close(socket_);
        for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) {
            ::unsetenv(name);
        }
    }

    std::string received() const {
        std::string all;
        std::array<char, 256> text{};
        ssize_t size = 0;
        while ((size = ::recv(socket_, text.data(), text.size(), MSG_DONTWAIT)) >= 0) {
            all.append(text.data(), static_cast<std::size_t>(size)) += ';';
        }
        return all;
    }

    /// Runs the event loop for that long.
    static void run(milliseconds duration) {
        const auto end = std::chrono::steady_clock::now() + duration;
        while (std::chrono::steady_clock::now() < end) {
            ASSERT_EQ(csock_select_with_msecs(1), 0);
        }
    }

    const int socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
};

TEST_F(Supervised, ADaemonReportsThatItIsReady) {
    EXPECT_EQ(daemon_start(0, 0), 0);
    EXPECT_EQ(received(), "");
    daemon_ready();
    EXPECT_EQ(received(), "READY=1;");
    ::unsetenv("NOTIFY_SOCKET");
    daemon_ready();
    EXPECT_EQ(received(), "");
}

TEST_F(Supervised, SignsOfLifeAtHalfOfTheIntervalWhilePassesComplete) {
    ::setenv("WATCHDOG_USEC", "20000", 1);
    ::setenv("WATCHDOG_PID", std::to_string(::getpid()).c_str(), 1);
    ASSERT_EQ(watchdog_csock_init("test"), 0);
    EXPECT_EQ(received(), "WATCHDOG=1;");
    ::usleep(15'000);
    EXPECT_EQ(received(), "") << "no passes, no sign";
    std::string signs;
    for (int i = 0; i < 1000 && signs.size() < 20; ++i) {
        run(milliseconds(1));
        signs += received();
    }
    EXPECT_EQ(signs, "WATCHDOG=1;WATCHDOG=1;");
    watchdog_csock_trigger();
    EXPECT_EQ(received(), "WATCHDOG=1;");
    watchdog_csock_exit();
    watchdog_csock_trigger();
    run(milliseconds(15));
    EXPECT_EQ(received(), "");
}

TEST_F(Supervised, SignsOfLifeRideOnTheCallOfEachSecond) {
    ::setenv("WATCHDOG_USEC", "120000", 1);
    ASSERT_EQ(watchdog_csock_init("test"), 0);
    received();
    slab_reap();
    EXPECT_EQ(received(), "") << "one was just sent";
    run(milliseconds(35));
    slab_reap();
    EXPECT_EQ(received(), "WATCHDOG=1;") << "the timer would be due before the next second";
    run(milliseconds(30));
    EXPECT_EQ(received(), "") << "the timer is put off";
}

TEST_F(Supervised, NoSignsOfLifeWhereNobodyWantsThem) {
    const struct {
        const char* usec;
        const char* pid;
    } rows[] = {{nullptr, nullptr}, {"20000", "1"},  {"20000", "x"},
                {"0", nullptr},     {"-5", nullptr}, {"20ms", nullptr}};
    for (const auto& row : rows) {
        ::unsetenv("WATCHDOG_PID");
        ::unsetenv("WATCHDOG_USEC");
        if (row.usec != nullptr) {
            ::setenv("WATCHDOG_USEC", row.usec, 1);
        }
        if (row.pid != nullptr) {
            ::setenv("WATCHDOG_PID", row.pid, 1);
        }
        EXPECT_EQ(watchdog_csock_init("test"), 0);
        watchdog_csock_trigger();
        EXPECT_EQ(received(), "");
    }
    ::setenv("WATCHDOG_USEC", "20000", 1);
    ::setenv("NOTIFY_SOCKET", std::string(200, 'x').c_str(), 1);
    EXPECT_EQ(watchdog_csock_init("test"), -EINVAL);
}

}  // namespace
