// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "nuv_platform/aicmd.h"
#include "platform/common/loop.hpp"

/// The server of debug commands behind aicmd.h, without the way by which its clients come: an
/// implementation hands it connected sockets. Results are those of aicmd.h.
namespace nuv::platform {

class CommandListener;

/// A connected socket, closed with its object: a FileDescriptor, or what a platform has instead.
class CommandSocket {
public:
    CommandSocket() = default;
    CommandSocket(const CommandSocket&) = delete;
    CommandSocket& operator=(const CommandSocket&) = delete;
    virtual ~CommandSocket() = default;
    virtual int get() const noexcept = 0;
};

template <typename Descriptor>
class CommandSocketOf final : public CommandSocket {
public:
    explicit CommandSocketOf(Descriptor socket) noexcept : socket_(std::move(socket)) {}
    int get() const noexcept override { return socket_.get(); }

private:
    Descriptor socket_;
};

/// Splits a line into words. Returns null, or why it cannot, for the client.
const char* split_command_line(std::string_view line, std::vector<std::string>& words);

/// The libraries of a process, and its listeners.
class CommandServer {
public:
    explicit CommandServer(Loop& loop) noexcept : loop_(loop) {}
    CommandServer(const CommandServer&) = delete;
    CommandServer& operator=(const CommandServer&) = delete;
    ~CommandServer() = default;

    int register_library(aicmd_library* library) noexcept;
    int unregister_library(const aicmd_library* library) noexcept;
    int set_context(const aicmd_library* library, const char* name, void* ctx) noexcept;

    /// The names of the registered libraries, in their order.
    std::vector<std::string> libraries() const;

private:
    friend class CommandListener;
    friend struct ::aicmd_session;

    struct Library {
        const aicmd_library* library;
        void* ctx;
    };
    std::vector<Library>::iterator find(const aicmd_library* library) noexcept;

    Loop& loop_;
    std::vector<Library> libraries_;
    std::vector<CommandListener*> listeners_;
    aicmd_session* running_ = nullptr;  // its handler is being called
};

/// The commands of one listener, and its sessions, which end with it.
class CommandListener {
public:
    static constexpr std::size_t MAX_SESSIONS = 8;

    /// Whether the structure and its table can be used.
    static bool valid(const aicmd_listener* listener) noexcept;

    /// Copies name and table.
    CommandListener(CommandServer& server, const aicmd_listener& listener);
    CommandListener(const CommandListener&) = delete;
    CommandListener& operator=(const CommandListener&) = delete;
    ~CommandListener();

    const std::string& name() const noexcept { return texts_.front(); }

    /// Serves the client at the other end of a connected stream socket, for which it is not asked
    /// whether it may. With too many sessions it is told so, and the socket closed.
    template <typename Descriptor>
    void serve(Descriptor socket) noexcept {
        try {
            begin(std::make_unique<CommandSocketOf<Descriptor>>(std::move(socket)));
        } catch (const std::bad_alloc&) {  // the client finds its connection closed
        }
    }

private:
    friend class CommandServer;
    friend struct ::aicmd_session;

    void begin(std::unique_ptr<CommandSocket> socket);

    CommandServer& server_;
    std::deque<std::string> texts_;  // their addresses stay
    std::vector<aicmd_command> commands_;
    std::vector<std::shared_ptr<aicmd_session>> sessions_;
};

}  // namespace nuv::platform

struct aicmd_session final : std::enable_shared_from_this<aicmd_session> {
public:
    /// Octets of a line with its newline.
    static constexpr std::size_t MAX_LINE = 4096;
    /// Octets of output that wait for the client.
    static constexpr std::size_t MAX_OUTPUT = 1 << 20;

    aicmd_session(nuv::platform::CommandListener& listener,
                  std::unique_ptr<nuv::platform::CommandSocket> socket);
    aicmd_session(const aicmd_session&) = delete;
    aicmd_session& operator=(const aicmd_session&) = delete;
    ~aicmd_session() = default;

    /// Enters or leaves the event loop. Without success the session is over.
    bool watch() noexcept;
    /// Closes the socket; the handler that may be running goes on without it.
    void cut() noexcept;

    int print(const char* fmt, std::va_list args) noexcept;
    int help(std::string_view prefix) noexcept;
    void* ctx() const noexcept;
    /// No further line is read, and the session ends when the client has its output.
    void end() noexcept { ended_ = true; }
    const aicmd_library* library() const noexcept { return library_; }

private:
    static int on_readable(int fd, void* ctx) noexcept;
    static int on_writable(int fd, void* ctx) noexcept;

    void read();
    void work();
    void answer(std::string_view line);
    void conclude(const char* error);
    void append(std::string_view text);
    void flush() noexcept;

    nuv::platform::CommandServer& server_;
    nuv::platform::CommandListener* listener_;              // null once it is gone
    std::unique_ptr<nuv::platform::CommandSocket> socket_;  // null once the session is cut
    std::uint32_t handle_ = 0;
    bool watching_output_ = false;
    bool too_long_ = false;      // up to the next newline the input is dropped
    bool end_of_input_ = false;  // the client sends no more, and may still read
    bool ended_ = false;
    const aicmd_library* library_ = nullptr;  // whose handler is being called
    std::string input_;
    std::string output_;
    bool line_open_ = false;  // the output so far ends within a line
};
