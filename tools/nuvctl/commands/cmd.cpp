// SPDX-License-Identifier: Apache-2.0
#include <editline/readline.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "commands/live_loop.hpp"
#include "commands/report.hpp"
#include "file.hpp"
#include "nuv_platform/aicmd.h"
#include "text/text.hpp"

namespace nuvctl {

namespace {

/// A connection to the debug commands of a daemon.
class Session {
public:
    explicit Session(int fd) : fd_(fd) {}
    ~Session() { close(fd_); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Sends a command and hands each line of its answer to `line`. Returns whether it succeeded; none
    /// when the daemon has ended the session. Throws FileError.
    template <class Line>
    std::optional<bool> run(const std::string& command, Line line) {
        write(command + '\n');
        while (const auto text = next_line()) {
            if (*text == "OK") {
                return true;
            }
            if (text->starts_with("ERROR")) {
                report(*text);
                return false;
            }
            line(*text);
        }
        return std::nullopt;
    }

private:
    void write(std::string_view octets) {
        while (!octets.empty()) {
            const ssize_t sent = ::send(fd_, octets.data(), octets.size(), MSG_NOSIGNAL);
            if (sent < 0 && errno != EINTR) {
                return;  // the end is seen when the answer is read
            }
            octets.remove_prefix(sent > 0 ? static_cast<std::size_t>(sent) : 0);
        }
    }

    std::optional<std::string> next_line() {
        for (;;) {
            if (const auto end = received_.find('\n'); end != std::string::npos) {
                std::string line = received_.substr(0, end);
                received_.erase(0, end + 1);
                return line;
            }
            char chunk[4096];
            const ssize_t size = ::read(fd_, chunk, sizeof chunk);
            if (size <= 0 && !(size < 0 && errno == EINTR)) {
                return std::nullopt;
            }
            received_.append(chunk, size > 0 ? static_cast<std::size_t>(size) : 0);
        }
    }

    int fd_;
    std::string received_;
};

/// The word as the server's reader takes it for one.
std::string quoted(const std::string& word) {
    if (!word.empty() && word.find_first_of(" \t\"\\") == std::string::npos) {
        return word;
    }
    std::string text = "\"";
    for (const char c : word) {
        text += c == '"' || c == '\\' ? std::string{'\\', c} : std::string(1, c);
    }
    return text + '"';
}

// What the prompt completes: the first words of HELP's lines. The library knows no context.
std::vector<std::string> commands;

char* next_completion(const char* text, int state) {
    static std::size_t next = 0;
    next = state == 0 ? 0 : next;
    const std::size_t length = std::strlen(text);
    while (next < commands.size()) {
        const std::string& command = commands[next++];
        if (strncasecmp(command.c_str(), text, length) == 0) {
            return strdup(command.c_str());
        }
    }
    return nullptr;
}

struct Free {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): from readline()
    void operator()(char* text) const { std::free(text); }
};

/// The next command: on a terminal with a prompt, else a line of standard input.
std::optional<std::string> next_command(const std::string& prompt, bool on_terminal) {
    std::string line;
    if (!on_terminal) {
        return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
    }
    const std::unique_ptr<char, Free> typed(readline(prompt.c_str()));
    if (typed == nullptr) {
        std::cout << '\n';
        return std::nullopt;
    }
    if (*typed != '\0') {
        add_history(typed.get());
    }
    return typed.get();
}

void print_line(const std::string& line) { std::cout << to_printable(line).text << '\n'; }

int run_all(Session& session, const std::string& endpoint) {
    const bool on_terminal = isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1;
    if (on_terminal) {
        session.run("HELP", [](const std::string& line) {
            commands.push_back(line.substr(0, line.find_first_of(" \t")));
        });
        rl_completion_entry_function = next_completion;
    }
    int status = 0;
    while (const auto command = next_command(endpoint + "> ", on_terminal)) {
        const auto succeeded = session.run(*command, print_line);
        std::cout.flush();
        if (!succeeded) {
            const bool asked_for = strncasecmp(command->c_str(), "quit", 4) == 0;
            if (!asked_for) {
                report("'" + endpoint + "' has ended the session");
            }
            return asked_for ? status : 1;
        }
        status = *succeeded ? status : 1;
    }
    return status;
}

}  // namespace

int run_cmd(const CmdOptions& options) {
    const int fd = aicmd_connect(options.endpoint.c_str());
    if (fd < 0) {
        report(problem_with(options.endpoint, fd));
        return 1;
    }
    Session session(fd);
    if (options.words.empty()) {
        return run_all(session, options.endpoint);
    }
    std::string command;
    for (const std::string& word : options.words) {
        command += (command.empty() ? "" : " ") + quoted(word);
    }
    const auto succeeded = session.run(command, print_line);
    if (!succeeded && strncasecmp(command.c_str(), "quit", 4) != 0) {
        report("'" + options.endpoint + "' has ended the session");
    }
    return succeeded.value_or(false) ? 0 : 1;
}

}  // namespace nuvctl
