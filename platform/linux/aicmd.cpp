// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/aicmd.hpp"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "nuv_platform/clock.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/csock.h"
#include "nuv_platform/ctimer.h"
#include "platform/common/aicmd_server.hpp"
#include "platform/common/file_descriptor.hpp"
#include "platform/common/ipc_receiver.hpp"
#include "platform/linux/fork.hpp"
#include "platform/linux/ipc/endpoint.hpp"
#include "platform/linux/ipc/runtime_folder.hpp"
#include "platform/linux/loop.hpp"

namespace nuv::platform {

namespace {

constexpr int ACCEPTS_PER_PASS = 16;
// Before a listener is asked again that could not accept.
constexpr std::uint32_t PAUSE_SECONDS = 1;
constexpr std::int64_t BETWEEN_WARNINGS_NS = 10'000'000'000;

std::string socket_name(const std::string& endpoint) { return endpoint + ".cmd"; }

/// The server of this process. It has the platform's own commands.
std::shared_ptr<CommandServer> command_server() {
    process_loop();  // lives longer
    static const auto instance = [] {
        auto server = std::make_shared<CommandServer>(process_loop());
        if (server->register_library(&platform_commands()) != 0) {
            throw std::bad_alloc();
        }
        return server;
    }();
    return instance;
}

/// The stream socket NAME.cmd of an endpoint, and the sessions of those who connected to it. It ends
/// while the endpoint owns its name.
class SocketListener {
public:
    SocketListener(const Endpoint& endpoint, const aicmd_listener& listener)
        : endpoint_(endpoint),
          name_(socket_name(endpoint.name())),
          server_(command_server()),
          commands_(*server_, listener) {}
    SocketListener(const SocketListener&) = delete;
    SocketListener& operator=(const SocketListener&) = delete;
    ~SocketListener() {
        ctimer_unsetup_internal(&pause_, CTIMER_TYPE_RELATIVE);
        csock_remove_fd(handle_);
        if (socket_) {
            ::unlinkat(endpoint_.folder(), name_.c_str(), 0);
        }
    }

    /// 0 or the negated errno.
    int open() {
        FileDescriptor socket = listen_in(endpoint_.folder(), name_, SOCK_STREAM);
        if (!socket) {
            return -errno;
        }
        socket_ = UnsharedDescriptor(std::move(socket));
        return watch() ? 0 : -EINVAL;
    }

private:
    bool watch() noexcept {
        handle_ = csock_add_fd(socket_.get(), name_.c_str(), on_readable, nullptr, nullptr, nullptr,
                               0, this);
        return handle_ != 0;
    }

    static int on_readable(int /*fd*/, void* ctx) {
        static_cast<SocketListener*>(ctx)->accept_some();
        return 0;
    }

    void accept_some() noexcept {
        for (int i = 0; i < ACCEPTS_PER_PASS; ++i) {
            FileDescriptor client(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
            if (!client) {
                if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
                    pause(errno);
                }
                return;
            }
            if (!peer_may_talk(endpoint_.folder(), client.get())) {
                warn(__LINE__, "refused a client: it may not talk to this process");
                continue;
            }
            try {
                commands_.serve(UnsharedDescriptor(std::move(client)));
            } catch (const std::bad_alloc&) {  // the client finds its connection closed
            }
        }
    }

    /// Out of descriptors or memory, the loop would report the same client without end.
    void pause(int error) noexcept {
        warn(__LINE__, std::strerror(error));
        csock_remove_fd(std::exchange(handle_, 0));
        const auto go_on = [](ctimerhandle* /*handle*/, void* ctx) {
            static_cast<SocketListener*>(ctx)->watch();
        };
        ctimer_setup_internal(nullptr, &pause_, CTIMER_TYPE_RELATIVE, 0, PAUSE_SECONDS, 1, go_on,
                              this, 0, 0);
    }

    void warn(int line, const char* text) noexcept {
        const std::int64_t now = nuv_clock_monotonic_ns();
        if (now >= next_warning_) {
            next_warning_ = now + BETWEEN_WARNINGS_NS;
            clogmod__warn(clogmod_get_or_alloc("aicmd"), "platform/linux/aicmd", "accept_some",
                          line, "%s: %s", name_.c_str(), text);
        }
    }

    const Endpoint& endpoint_;
    const std::string name_;
    UnsharedDescriptor socket_;
    std::uint32_t handle_ = 0;
    ctimerhandle pause_{};
    std::int64_t next_warning_ = std::numeric_limits<std::int64_t>::min();
    const std::shared_ptr<CommandServer> server_;
    CommandListener commands_;
};

template <typename Action>
int guarded(Action action) noexcept {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

int listen(Endpoint& endpoint, const aicmd_listener& commands) {
    if (endpoint.command_listener() != nullptr) {
        return -EEXIST;
    }
    const auto listener = std::make_shared<SocketListener>(endpoint, commands);
    const int result = listener->open();
    if (result == 0) {
        endpoint.command_listener() = listener;
    }
    return result;
}

/// A connected descriptor, or the negated errno.
int connect(const std::string& endpoint) {
    const RuntimeFolder folder = open_runtime_folder();
    if (!folder.fd) {
        return folder.error;
    }
    FileDescriptor socket = connect_in(folder.fd.get(), socket_name(endpoint), SOCK_STREAM);
    if (!socket) {
        return -errno;
    }
    if (!peer_may_talk(folder.fd.get(), socket.get())) {
        return -EACCES;
    }
    constexpr int BLOCKING = 0;
    return ::fcntl(socket.get(), F_SETFL, BLOCKING) == 0 ? socket.release() : -errno;
}

}  // namespace

}  // namespace nuv::platform

using nuv::platform::command_server;
using nuv::platform::Endpoint;
using nuv::platform::guarded;

extern "C" {

int aicmd_listen_start(nuvipc* ipc, aicmd_listener* listener, unsigned /*zero1*/,
                       unsigned /*zero2*/, unsigned /*zero3*/, unsigned /*zero4*/,
                       unsigned /*zero5*/, ...) {
    if (ipc == nullptr || listener == nullptr || !nuv::platform::CommandListener::valid(listener)) {
        return -EINVAL;
    }
    Endpoint& endpoint = *Endpoint::from(ipc);
    if (endpoint.inherited()) {
        return -ECHILD;
    }
    return guarded([&] { return nuv::platform::listen(endpoint, *listener); });
}

int aicmd_register_library(aicmd_library* library) {
    return guarded([library] { return command_server()->register_library(library); });
}

int aicmd_unregister_library(aicmd_library* library) {
    return guarded([library] { return command_server()->unregister_library(library); });
}

int aicmd_module_set_ctx(aicmd_library* library, const char* name, void* ctx) {
    return guarded([=] { return command_server()->set_context(library, name, ctx); });
}

int aicmd_connect(const char* endpoint) {
    if (endpoint == nullptr || !nuv::platform::is_endpoint_name(endpoint)) {
        return -EINVAL;
    }
    return guarded([endpoint] { return nuv::platform::connect(endpoint); });
}

}  // extern "C"
