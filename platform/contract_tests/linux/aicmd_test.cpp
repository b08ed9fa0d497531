// SPDX-License-Identifier: Apache-2.0
// Debug commands as they are on Linux: the socket in the runtime folder, and the commands that every
// process has.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "nuv_platform/aicmd.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/csock.h"
#include "nuv_platform/ctimer.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;

class AicmdLinux : public testing::Test {
protected:
    void SetUp() override {
        ::setenv("NUV_RUNTIME_DIR", folder_.c_str(), 1);
        ASSERT_EQ(csock_init(), 0);
        ipc_ = nuvipc_create("nuvtest");
        ASSERT_NE(ipc_, nullptr);
        const aicmd_command help{"HELP", aicmd_help, "show help"};
        aicmd_listener listener{"nuvtest", &help, 1, {0, 0}};
        ASSERT_EQ(aicmd_listen_start(ipc_, &listener, 0, 0, 0, 0, 0), 0);
    }
    void TearDown() override {
        nuvipc_destroy(ipc_);
        csock_exit();
        fs::remove_all(folder_);
        ::unsetenv("NUV_RUNTIME_DIR");
    }

    static int connect() {
        const int client = aicmd_connect("nuvtest");
        EXPECT_GE(client, 0);
        return client;
    }

    static std::string ask(int client, const std::string& lines) {
        ::send(client, lines.data(), lines.size(), MSG_NOSIGNAL);
        std::string text;
        for (int i = 0; i < 12; ++i) {
            EXPECT_EQ(csock_select_with_msecs(0), 0);
            std::array<char, 4096> octets{};
            const ssize_t size = ::recv(client, octets.data(), octets.size(), MSG_DONTWAIT);
            if (size == 0) {
                return text + "<end>";
            }
            text.append(octets.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
        }
        return text;
    }

    const fs::path folder_ = fs::temp_directory_path() / ("nuvtest." + std::to_string(::getpid()));
    nuvipc* ipc_ = nullptr;
};

TEST_F(AicmdLinux, SocketBesideTheEndpoint) {
    const fs::path socket = folder_ / "nuvtest.cmd";
    EXPECT_EQ(fs::status(socket).permissions(), fs::perms(0660));
    EXPECT_EQ(aicmd_connect("nobody"), -ENOENT);
    for (const char* name : {"", "../nuvtest", "nuvtest.cmd"}) {
        EXPECT_EQ(aicmd_connect(name), -EINVAL);
    }
    EXPECT_EQ(aicmd_connect(nullptr), -EINVAL);
    const int client = connect();
    EXPECT_EQ(::fcntl(client, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_EQ(::fcntl(client, F_GETFD), FD_CLOEXEC);
    ::close(client);

    fs::rename(socket, folder_ / "dead.cmd");
    nuvipc_destroy(ipc_);
    ipc_ = nullptr;
    EXPECT_EQ(aicmd_connect("dead"), -ECONNREFUSED);
    EXPECT_FALSE(fs::exists(socket));
}

TEST_F(AicmdLinux, AStrangerIsNotServedWhateverTheModesOfTheFilesAre) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root to become somebody else";
    }
    for (const bool open : {false, true}) {
        if (open) {
            fs::permissions(folder_, fs::perms(0777));
            fs::permissions(folder_ / "nuvtest.cmd", fs::perms(0777));
        }
        const pid_t stranger = ::fork();
        if (stranger == 0) {
            constexpr unsigned NOBODY = 65534;
            const bool changed = ::setgroups(0, nullptr) == 0 &&
                                 ::setresgid(NOBODY, NOBODY, NOBODY) == 0 &&
                                 ::setresuid(NOBODY, NOBODY, NOBODY) == 0;
            const int client = aicmd_connect("nuvtest");
            const ssize_t sent = ::send(client, "HELP\n", 5, MSG_NOSIGNAL);
            char octet = 0;
            const bool answered = sent == 5 && ::recv(client, &octet, 1, 0) > 0;
            ::_exit(changed && (client == -EACCES) != open && !answered ? 0 : 1);
        }
        int status = -1;
        testing::internal::CaptureStderr();
        while (::waitpid(stranger, &status, WNOHANG) == 0) {
            ASSERT_EQ(csock_select_with_msecs(1), 0);
        }
        EXPECT_EQ(status, 0);
        EXPECT_THAT(testing::internal::GetCapturedStderr(),
                    open
                        ? testing::EndsWith("WARN aicmd: nuvtest.cmd: refused a client: it may not "
                                            "talk to this process\n")
                        : testing::EndsWith(""));
    }
}

// Otherwise the loop would report the same client again and again.
TEST_F(AicmdLinux, OutOfDescriptorsTheListenerPauses) {
    const int client = connect();
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none{.rlim_cur = 3, .rlim_max = limit.rlim_max};
    // A sanitizer that meets an output for the first time needs descriptors.
    clogmod__warn(clogmod_get_or_alloc("test"), nullptr, nullptr, 0, "soon out of descriptors");
    testing::internal::CaptureStderr();
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_EQ(ask(client, "HELP\n"), "");
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                MatchesRegex("[^\n]*WARN aicmd: nuvtest.cmd: Too many open files\n"));
    EXPECT_EQ(ask(client, ""), "") << "it goes on only after a second";
    ::close(client);
}

TEST_F(AicmdLinux, AForkedChildHasNeitherListenerNorSessions) {
    const int client = connect();
    EXPECT_THAT(ask(client, "HELP\n"), testing::EndsWith("OK\n"));
    std::array<int, 2> alive{};  // parent, child
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, alive.data()), 0);
    char octet = 0;
    const pid_t child = ::fork();
    if (child == 0) {
        const aicmd_command help{"HELP", aicmd_help, "show help"};
        aicmd_listener listener{"nuvtest", &help, 1, {0, 0}};
        const bool refused = aicmd_listen_start(ipc_, &listener, 0, 0, 0, 0, 0) == -ECHILD;
        nuvipc_destroy(ipc_);
        ::close(alive[0]);
        EXPECT_EQ(::write(alive[1], &octet, 1), 1);
        EXPECT_EQ(::read(alive[1], &octet, 1), 0);
        ::_exit(refused ? 0 : 1);
    }
    ::close(alive[1]);
    EXPECT_EQ(::read(alive[0], &octet, 1), 1);
    EXPECT_THAT(ask(client, "HELP\n"), testing::EndsWith("OK\n"));
    EXPECT_TRUE(fs::exists(folder_ / "nuvtest.cmd"));
    nuvipc_destroy(ipc_);
    ipc_ = nullptr;
    EXPECT_EQ(ask(client, ""), "<end>") << "the child holds no copy";
    ::close(client);
    ::close(alive[0]);
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_F(AicmdLinux, CommandsOfThePlatform) {
    clogmod* const module = clogmod_get_or_alloc("aicmd_test");
    clogmod_set_loglevel(module, CLOGGER_INFO);
    ctimerhandle slow{};
    const auto on_timer = [](ctimerhandle* /*handle*/, void* /*ctx*/) { ::usleep(12'000); };
    ASSERT_EQ(ctimer_setup_internal(nullptr, &slow, CTIMER_TYPE_RELATIVE, 0, 0, 1000, on_timer,
                                    reinterpret_cast<void*>(0xabcd0), 0, 0),
              0);
    ASSERT_EQ(csock_select_with_msecs(0), 0);
    ASSERT_EQ(nuvipc_msg_send(ipc_, "nobody", "x", 1), -ENOENT);
    const struct {
        const char* line;
        const char* answer;  // a part of it
    } rows[] = {
        {"LOOPSHOW", " 0xabcd0\n"},
        {"IPCSHOW", "sent      message          1  nobody, No such file or directory\n"},
        {"IPCSHOW", "\ndropped: "},
        {"LOGSHOW", "module \"aicmd_test\" level 2\n"},
        {"LOGLEVEL aicmd_test DEBUG", "OK\n"},
        {"LOGSHOW", "module \"aicmd_test\" level 3\n"},
        {"LOGLEVEL aicmd_test none", "OK\n"},
        {"LOGSHOW", "module \"aicmd_test\" level -1\n"},
        {"LOGLEVEL aicmd_test loud", "ERROR Invalid argument\n"},
        {"LOGLEVEL aicmd_test", "ERROR Invalid argument\n"},
        {"LOGLEVEL no_such_module warn", "ERROR No such file or directory\n"},
        {"HELP LOG", "LOGLEVEL module none|error|warn|info|debug|trace  set the level"},
    };
    const int client = connect();
    for (const auto& row : rows) {
        EXPECT_THAT(ask(client, std::string(row.line) + '\n'), HasSubstr(row.answer)) << row.line;
    }
    ::close(client);
    EXPECT_EQ(clogmod_get_loglevel(module), -1);
}

}  // namespace
