// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/aicmd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "nuv_platform/csock.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

constexpr const char* ENDPOINT = "nuvtest";

/// A client that is served while it waits.
class Client {
public:
    explicit Client(const std::string& input = {}) : fd_(aicmd_connect(ENDPOINT)) {
        EXPECT_GE(fd_, 0);
        send(input);
    }
    Client(Client&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Client& operator=(Client&&) = delete;
    ~Client() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    void send(const std::string& text) const {
        ::send(fd_, text.data(), text.size(), MSG_NOSIGNAL);
    }
    void end_input() const { ::shutdown(fd_, SHUT_WR); }

    /// All that is answered within some passes; "<end>" stands for the end of the connection.
    std::string answers(int passes = 12) const {
        std::string text;
        for (int i = 0; i < passes; ++i) {
            EXPECT_EQ(csock_select_with_msecs(0), 0);
            std::array<char, 65536> octets{};
            for (;;) {
                const ssize_t size = ::recv(fd_, octets.data(), octets.size(), MSG_DONTWAIT);
                if (size == 0 || (size < 0 && errno != EAGAIN)) {
                    return text + "<end>";
                }
                if (size < 0) {
                    break;
                }
                text.append(octets.data(), static_cast<std::size_t>(size));
                i = 0;
            }
        }
        return text;
    }

private:
    int fd_;
};

std::function<int(aicmd_session*)> action;

int run_action(aicmd_session* session, int /*argc*/, char** /*argv*/) { return action(session); }

int echo(aicmd_session* session, int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        aicmd_printf(session, "[%s]", argv[i]);
    }
    return argv[argc] == nullptr ? 0 : -EINVAL;
}

class AicmdContract : public testing::Test {
protected:
    void SetUp() override {
        ::setenv("NUV_RUNTIME_DIR", folder_.c_str(), 1);
        ASSERT_EQ(csock_init(), 0);
        ipc_ = nuvipc_create(ENDPOINT);
        ASSERT_NE(ipc_, nullptr);
        std::string help = "HELP [command]";  // the listener copies it
        const std::vector<aicmd_command> commands = {{help.c_str(), aicmd_help, "show help"},
                                                     {"QUIT", aicmd_quit, "disconnect"},
                                                     {"echo [word...]", echo, nullptr}};
        aicmd_listener listener{ENDPOINT, commands.data(), 3, {0, 0}};
        ASSERT_EQ(aicmd_listen_start(ipc_, &listener, 0, 0, 0, 0, 0), 0);
        EXPECT_EQ(aicmd_listen_start(ipc_, &listener, 0, 0, 0, 0, 0), -EEXIST);
        help = "overwritten";
        ASSERT_EQ(aicmd_register_library(&library_), 0);
    }
    void TearDown() override {
        aicmd_unregister_library(&library_);
        nuvipc_destroy(ipc_);
        csock_exit();
        std::filesystem::remove_all(folder_);
        ::unsetenv("NUV_RUNTIME_DIR");
    }

    const std::string folder_ =
        std::filesystem::temp_directory_path() / ("nuvtest." + std::to_string(::getpid()));
    nuvipc* ipc_ = nullptr;
    const std::array<aicmd_command, 2> commands_ = {
        {{"act", run_action, "act"}, {"Fail code", echo, "fail"}}};
    aicmd_library library_{"library", commands_.data(), 2, {0, 0}};
};

TEST_F(AicmdContract, LinesAreSplitAndAnswered) {
    const std::string longest = std::string(4095 - 5, 'x');
    const std::pair<std::string, std::string> rows[] = {
        {"", "OK\n"},
        {" \t ", "OK\n"},
        {"echo", "OK\n"},
        {"\t eCHO  a\tb ", "[a][b]\nOK\n"},
        {"echo \"a b\" \"\" c\"d e\"f", "[a b][][cd ef]\nOK\n"},
        {R"(echo "a\"b\\" a\b)", "[a\"b\\][a\\b]\nOK\n"},
        {"echo \"a", "ERROR missing quote\n"},
        {std::string("echo \0", 6), "ERROR NUL in the line\n"},
        {"ech", "ERROR unknown command\n"},
        {"\"\"", "ERROR unknown command\n"},
        {"echo " + longest, "[" + longest + "]\nOK\n"},
        {"echo " + longest + "x", "ERROR line too long\n"},
        {std::string(10'000, 'x'), "ERROR line too long\n"},
    };
    const Client client;
    std::string all_lines;
    std::string all_answers;
    for (const auto& [line, answer] : rows) {
        client.send(line + '\n');
        EXPECT_EQ(client.answers(), answer) << line;
        all_lines += line + '\n';
        all_answers += answer;
    }
    client.send(all_lines);
    client.end_input();
    EXPECT_EQ(client.answers(), all_answers + "<end>") << "all at once";
}

TEST_F(AicmdContract, ResultsOfHandlersAndTheirSession) {
    const struct {
        const char* name;
        std::function<int(aicmd_session*)> action;
        std::string answer;
    } rows[] = {
        {"a number", [](auto*) { return 7; }, "ERROR 7\n"},
        {"an errno", [](auto*) { return -ENOENT; }, "ERROR No such file or directory\n"},
        {"lines", [](auto* s) { return aicmd_printf(s, "%d\n%s\n", 1, "x") - 4; }, "1\nx\nOK\n"},
        {"no context", [](auto* s) { return aicmd_session_ctx(s) == nullptr ? 0 : 1; }, "OK\n"},
        {"quits", [](auto* s) { return aicmd_quit(s, 0, nullptr); }, "OK\n<end>"},
        {"unregisters its library",
         [this](auto* s) {
             EXPECT_EQ(aicmd_module_set_ctx(&library_, "library", this), 0);
             EXPECT_EQ(aicmd_session_ctx(s), this);
             EXPECT_EQ(aicmd_unregister_library(&library_), 0);
             EXPECT_EQ(aicmd_session_ctx(s), nullptr);
             return aicmd_printf(s, "gone\n") - 5;
         },
         "gone\nOK\n<end>"},
        {"destroys the endpoint",
         [this](auto* s) {
             nuvipc_destroy(std::exchange(ipc_, nullptr));
             EXPECT_EQ(aicmd_help(s, 1, nullptr), 0);
             return aicmd_printf(s, "nobody reads this") < 0 ? 0 : 1;
         },
         "<end>"},
    };
    for (const auto& row : rows) {
        action = row.action;
        aicmd_register_library(&library_);
        const Client client("act\nHELP nothing\n");
        const std::string next = "ERROR No such file or directory\n";
        EXPECT_EQ(client.answers(), row.answer + (row.answer.ends_with("<end>") ? "" : next))
            << row.name;
    }
    EXPECT_EQ(aicmd_connect(ENDPOINT), -ENOENT) << "the listener ends with its endpoint";
}

TEST_F(AicmdContract, HelpListsTheListenersCommandsFirst) {
    const Client client("HELP\n");
    const std::string all = client.answers();
    EXPECT_THAT(all, testing::StartsWith("HELP [command]"));
    EXPECT_THAT(all, EndsWith("OK\n"));
    EXPECT_LT(all.find("echo [word...]"), all.find("act"));
    EXPECT_LT(all.find("act"), all.find("Fail code"));
    client.send("help FAIL\n");
    EXPECT_EQ(client.answers(), "Fail code  fail\nOK\n");
}

TEST_F(AicmdContract, LibrariesAreRefusedAsAWhole) {
    const auto table = [](const char* first, const char* second) {
        return std::array<aicmd_command, 2>{{{first, echo, nullptr}, {second, echo, nullptr}}};
    };
    const struct {
        const char* name;
        std::array<aicmd_command, 2> commands;
        int result;
    } rows[] = {
        {"a word of the listener", table("new", "Help"), -EEXIST},
        {"a word of a library", table("new", "FAIL text"), -EEXIST},
        {"a word twice", table("new", "NEW [x]"), -EEXIST},
        {"no word", table("new", " x"), -EINVAL},
        {"a null command", table("new", nullptr), -EINVAL},
        {"longer and shorter words", table("helper", "hel"), 0},
    };
    for (const auto& row : rows) {
        aicmd_library library{"other", row.commands.data(), 2, {0, 0}};
        EXPECT_EQ(aicmd_register_library(&library), row.result) << row.name;
        const Client client("new\n");
        EXPECT_EQ(client.answers(), "ERROR unknown command\n") << row.name;
        EXPECT_EQ(aicmd_unregister_library(&library), row.result == 0 ? 0 : -ENOENT) << row.name;
    }
    aicmd_library without_handler{"other", nullptr, 1, {0, 0}};
    EXPECT_EQ(aicmd_register_library(&without_handler), -EINVAL);
    EXPECT_EQ(aicmd_register_library(nullptr), -EINVAL);
    EXPECT_EQ(aicmd_unregister_library(nullptr), -EINVAL);
    EXPECT_EQ(aicmd_register_library(&library_), -EEXIST);
    EXPECT_EQ(aicmd_module_set_ctx(&without_handler, "other", this), -ENOENT);
    EXPECT_EQ(aicmd_module_set_ctx(&library_, "other", this), -ENOENT);
    EXPECT_EQ(aicmd_module_set_ctx(nullptr, "library", this), -EINVAL);
    aicmd_listener listener{ENDPOINT, nullptr, 1, {0, 0}};
    EXPECT_EQ(aicmd_listen_start(ipc_, &listener, 0, 0, 0, 0, 0), -EINVAL);
    EXPECT_EQ(aicmd_listen_start(ipc_, nullptr, 0, 0, 0, 0, 0), -EINVAL);
    EXPECT_EQ(aicmd_listen_start(nullptr, &listener, 0, 0, 0, 0, 0), -EINVAL);
}

TEST_F(AicmdContract, EightSessions) {
    std::vector<Client> clients;
    for (int i = 0; i < 8; ++i) {
        clients.emplace_back("\n");
        EXPECT_EQ(clients.back().answers(), "OK\n");
    }
    EXPECT_EQ(Client().answers(), "ERROR too many sessions\n<end>");
    clients.pop_back();
    EXPECT_EQ(csock_select_with_msecs(0), 0);
    EXPECT_EQ(Client("\n").answers(), "OK\n");
}

TEST_F(AicmdContract, OutputWaitsForTheClientUpToALimit) {
    const std::string chunk(1024, 'x');
    std::size_t size = 0;
    action = [&](aicmd_session* session) {
        size = 0;
        while (size < 8'000'000 && aicmd_printf(session, "%s", chunk.c_str()) >= 0) {
            size += chunk.size();
        }
        return 0;
    };
    EXPECT_THAT(Client("act\n").answers(), Not(HasSubstr("OK")));
    EXPECT_GE(size, std::size_t{1} << 20);
    EXPECT_LT(size, 8'000'000U);

    action = [&chunk](aicmd_session* session) {
        for (int i = 0; i < 1000; ++i) {
            EXPECT_EQ(aicmd_printf(session, "%s", chunk.c_str()), 1024);
        }
        return 0;
    };
    const Client client("act\nact\nQUIT\n");
    const std::string all = client.answers();
    EXPECT_EQ(all.size(), 2 * (1'024'000 + 4) + 3 + 5);
    EXPECT_THAT(all, EndsWith("OK\nOK\n<end>"));
}

}  // namespace
