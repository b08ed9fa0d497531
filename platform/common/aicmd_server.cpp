// SPDX-License-Identifier: Apache-2.0
#include "platform/common/aicmd_server.hpp"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "nuv_platform/clog.h"
#include "platform/common/clog_core.hpp"

namespace nuv::platform {

namespace {

// Below this, output waits for the end of its command.
constexpr std::size_t OUTPUT_WORTH_SENDING = 65536;

bool is_blank(char c) { return c == ' ' || c == '\t'; }

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool begins_with(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

bool same_word(std::string_view a, std::string_view b) {
    return a.size() == b.size() && begins_with(a, b);
}

std::string_view first_word(const char* command) { return {command, std::strcspn(command, " \t")}; }

template <typename Table>
std::span<const aicmd_command> commands_of(const Table& table) {
    return {table.commands, table.count};
}

template <typename Table>
bool valid_table(const Table* table) {
    return table != nullptr && table->name != nullptr &&
           (table->commands != nullptr || table->count == 0) &&
           std::ranges::all_of(commands_of(*table), [](const aicmd_command& command) {
               return command.command != nullptr && command.handler != nullptr &&
                      !first_word(command.command).empty();
           });
}

const aicmd_command* find_command(std::span<const aicmd_command> commands, std::string_view word) {
    const auto found = std::ranges::find_if(commands, [word](const aicmd_command& command) {
        return same_word(first_word(command.command), word);
    });
    return found != commands.end() ? &*found : nullptr;
}

}  // namespace

const char* split_command_line(std::string_view line, std::vector<std::string>& words) {
    if (line.find('\0') != std::string_view::npos) {
        return "NUL in the line";
    }
    bool in_word = false;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (!quoted && is_blank(line[i])) {
            in_word = false;
            continue;
        }
        if (!std::exchange(in_word, true)) {
            words.emplace_back();
        }
        if (line[i] == '"') {
            quoted = !quoted;
            continue;
        }
        i += quoted && line[i] == '\\' && i + 1 < line.size() ? 1 : 0;
        words.back() += line[i];
    }
    return quoted ? "missing quote" : nullptr;
}

std::vector<CommandServer::Library>::iterator CommandServer::find(
    const aicmd_library* library) noexcept {
    return std::ranges::find(libraries_, library, &Library::library);
}

int CommandServer::register_library(aicmd_library* library) noexcept {
    if (!valid_table(library)) {
        return -EINVAL;
    }
    if (find(library) != libraries_.end()) {
        return -EEXIST;
    }
    const auto commands = commands_of(*library);
    for (std::size_t i = 0; i < commands.size(); ++i) {
        const std::string_view word = first_word(commands[i].command);
        const auto taken = [word](std::span<const aicmd_command> others) {
            return find_command(others, word) != nullptr;
        };
        if (taken(commands.first(i)) ||
            std::ranges::any_of(listeners_, [&](auto* other) { return taken(other->commands_); }) ||
            std::ranges::any_of(libraries_,
                                [&](auto& other) { return taken(commands_of(*other.library)); })) {
            return -EEXIST;
        }
    }
    try {
        libraries_.push_back({library, nullptr});
        return 0;
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

int CommandServer::unregister_library(const aicmd_library* library) noexcept {
    if (library == nullptr) {
        return -EINVAL;
    }
    const auto found = find(library);
    if (found == libraries_.end()) {
        return -ENOENT;
    }
    libraries_.erase(found);
    if (running_ != nullptr && running_->library() == library) {
        running_->end();
    }
    return 0;
}

int CommandServer::set_context(const aicmd_library* library, const char* name, void* ctx) noexcept {
    if (library == nullptr || name == nullptr) {
        return -EINVAL;
    }
    const auto found = find(library);
    if (found == libraries_.end() || std::strcmp(library->name, name) != 0) {
        return -ENOENT;
    }
    found->ctx = ctx;
    return 0;
}

std::vector<std::string> CommandServer::libraries() const {
    std::vector<std::string> names;
    for (const Library& entry : libraries_) {
        names.emplace_back(entry.library->name);
    }
    return names;
}

bool CommandListener::valid(const aicmd_listener* listener) noexcept {
    return valid_table(listener);
}

CommandListener::CommandListener(CommandServer& server, const aicmd_listener& listener)
    : server_(server) {
    const auto copy = [this](const char* text) {
        return texts_.emplace_back(text != nullptr ? text : "").c_str();
    };
    copy(listener.name);
    for (const aicmd_command& command : commands_of(listener)) {
        commands_.push_back({copy(command.command), command.handler, copy(command.help)});
    }
    server_.listeners_.push_back(this);
}

CommandListener::~CommandListener() {
    std::erase(server_.listeners_, this);
    while (!sessions_.empty()) {
        sessions_.back()->cut();
    }
}

void CommandListener::begin(std::unique_ptr<CommandSocket> socket) {
    if (sessions_.size() >= MAX_SESSIONS) {
        constexpr std::string_view REFUSAL = "ERROR too many sessions\n";
        ::send(socket->get(), REFUSAL.data(), REFUSAL.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        return;
    }
    const auto session = std::make_shared<aicmd_session>(*this, std::move(socket));
    sessions_.push_back(session);
    if (!session->watch()) {
        session->cut();
    }
}

}  // namespace nuv::platform

using nuv::platform::CommandListener;
using nuv::platform::CommandSocket;

aicmd_session::aicmd_session(CommandListener& listener, std::unique_ptr<CommandSocket> socket)
    : server_(listener.server_), listener_(&listener), socket_(std::move(socket)) {}

bool aicmd_session::watch() noexcept {
    const bool output = !output_.empty();
    if (handle_ != 0 && output == watching_output_) {
        return true;
    }
    server_.loop_.remove(handle_);
    watching_output_ = output;
    handle_ = server_.loop_.add(
        socket_->get(), "aicmd session",
        {output ? nullptr : on_readable, output ? on_writable : nullptr, nullptr, nullptr}, this);
    return handle_ != 0;
}

void aicmd_session::cut() noexcept {
    server_.loop_.remove(std::exchange(handle_, 0));
    socket_.reset();
    if (CommandListener* const listener = std::exchange(listener_, nullptr)) {
        // This may be the last to know the session; it goes on until it returns.
        const auto self = shared_from_this();
        std::erase(listener->sessions_, self);
    }
}

int aicmd_session::on_readable(int /*fd*/, void* ctx) noexcept {
    const auto self = static_cast<aicmd_session*>(ctx)->shared_from_this();
    try {
        self->read();
        self->work();
    } catch (const std::bad_alloc&) {
        self->cut();
    }
    return 0;
}

int aicmd_session::on_writable(int /*fd*/, void* ctx) noexcept {
    const auto self = static_cast<aicmd_session*>(ctx)->shared_from_this();
    try {
        self->flush();
        self->work();
    } catch (const std::bad_alloc&) {
        self->cut();
    }
    return 0;
}

void aicmd_session::read() {
    std::array<char, MAX_LINE> octets;  // NOLINT(cppcoreguidelines-pro-type-member-init)
    const ssize_t size =
        ::recv(socket_->get(), octets.data(), octets.size() - input_.size(), MSG_DONTWAIT);
    if (size > 0) {
        input_.append(octets.data(), static_cast<std::size_t>(size));
    } else if (size == 0) {
        end_of_input_ = true;
    } else if (errno != EAGAIN && errno != EINTR) {
        cut();
    }
}

/// Answers the lines there are, one after the other as the client takes the answers.
void aicmd_session::work() {
    while (socket_ && !ended_ && output_.empty()) {
        const std::size_t newline = input_.find('\n');
        if (newline == std::string::npos) {
            break;
        }
        const std::string line = input_.substr(0, newline);
        input_.erase(0, newline + 1);
        if (std::exchange(too_long_, false)) {
            conclude("line too long");
        } else {
            answer(line);
        }
        flush();
    }
    if (!socket_) {
        return;
    }
    if (output_.empty()) {
        if (ended_ || end_of_input_) {
            cut();
            return;
        }
        if (input_.size() == MAX_LINE) {
            too_long_ = true;
            input_.clear();
        }
    }
    if (!watch()) {
        cut();
    }
}

void aicmd_session::answer(std::string_view line) {
    std::vector<std::string> words;
    if (const char* const error = nuv::platform::split_command_line(line, words)) {
        conclude(error);
        return;
    }
    if (words.empty()) {
        conclude(nullptr);
        return;
    }
    const aicmd_command* command = nuv::platform::find_command(listener_->commands_, words[0]);
    for (const auto& [library, ctx] : server_.libraries_) {
        if (command == nullptr) {
            command = nuv::platform::find_command(nuv::platform::commands_of(*library), words[0]);
            library_ = command != nullptr ? library : nullptr;
        }
    }
    if (command == nullptr) {
        conclude("unknown command");
        return;
    }
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    server_.running_ = this;
    const int result = command->handler(this, static_cast<int>(words.size()), argv.data());
    server_.running_ = nullptr;
    library_ = nullptr;
    if (result == 0) {
        conclude(nullptr);
    } else {
        conclude(result < 0 ? std::strerror(-result) : std::to_string(result).c_str());
    }
}

void aicmd_session::conclude(const char* error) {
    const std::string begin = line_open_ ? "\n" : "";
    append(error != nullptr ? begin + "ERROR " + error + '\n' : begin + "OK\n");
}

void aicmd_session::append(std::string_view text) {
    if (!socket_) {
        return;
    }
    output_ += text;
    line_open_ = text.empty() ? line_open_ : text.back() != '\n';
    if (output_.size() >= nuv::platform::OUTPUT_WORTH_SENDING) {
        flush();
    }
    if (output_.size() > MAX_OUTPUT) {
        clogmod__warn(clogmod_get_or_alloc("aicmd"), "platform/common/aicmd_server", __func__,
                      __LINE__, "session ended: the client does not read its output");
        cut();
    }
}

void aicmd_session::flush() noexcept {
    while (socket_ && !output_.empty()) {
        const ssize_t size =
            ::send(socket_->get(), output_.data(), output_.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (size == static_cast<ssize_t>(output_.size())) {
            output_ = std::string();  // gives its memory back
        } else if (size >= 0) {
            output_.erase(0, static_cast<std::size_t>(size));
        } else if (errno == EAGAIN) {
            return;
        } else if (errno != EINTR) {
            cut();
        }
    }
}

int aicmd_session::print(const char* fmt, std::va_list args) noexcept {
    try {
        std::string buffer;
        const std::string_view text = nuv::platform::clog::format_text(buffer, fmt, args);
        append(text);
        return socket_ ? static_cast<int>(text.size()) : -EPIPE;
    } catch (const std::bad_alloc&) {
        cut();
        return -ENOMEM;
    }
}

int aicmd_session::help(std::string_view prefix) noexcept {
    bool any = false;
    std::size_t width = 0;
    const auto for_each = [&](auto visit) {
        const auto visit_all = [&](std::span<const aicmd_command> commands) {
            for (const aicmd_command& command : commands) {
                if (nuv::platform::begins_with(command.command, prefix)) {
                    visit(command);
                }
            }
        };
        if (listener_ != nullptr) {
            visit_all(listener_->commands_);
        }
        for (const auto& [library, ctx] : server_.libraries_) {
            visit_all(nuv::platform::commands_of(*library));
        }
    };
    for_each([&](const aicmd_command& command) {
        any = true;
        width = std::max(width, std::strlen(command.command));
    });
    for_each([&](const aicmd_command& command) {
        aicmd_printf(this, "%-*s  %s\n", static_cast<int>(width), command.command,
                     command.help != nullptr ? command.help : "");
    });
    return any ? 0 : -ENOENT;
}

void* aicmd_session::ctx() const noexcept {
    const auto found = server_.find(library_);
    return found != server_.libraries_.end() ? found->ctx : nullptr;
}
