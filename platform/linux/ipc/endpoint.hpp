// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "nuv_platform/ctimer.h"
#include "nuv_platform/nuvipc.h"
#include "platform/common/ipc_receiver.hpp"
#include "platform/linux/fork.hpp"
#include "platform/linux/ipc/connection.hpp"
#include "platform/linux/ipc/registry.hpp"

namespace nuv::platform {

/// An endpoint of this process: a name in the runtime folder, its connections, and its handlers. The
/// int results are those of nuvipc.h.
class Endpoint : public std::enable_shared_from_this<Endpoint> {
public:
    /// Null on failure, and `error` is set and the log says why.
    static Endpoint* create(const char* name, int& error) noexcept;
    static void destroy(Endpoint& endpoint) noexcept;
    /// Of all endpoints of this process into their lock files.
    static void write_pids() noexcept;

    explicit Endpoint(const char* name) : name_(name) {}
    ~Endpoint() { close(); }
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    nuvipc* handle() noexcept { return reinterpret_cast<nuvipc*>(this); }
    static Endpoint* from(nuvipc* ipc) noexcept { return reinterpret_cast<Endpoint*>(ipc); }

    bool inherited() const noexcept { return lock_.inherited(); }
    int send(const char* destination, const void* data, std::uint32_t size) noexcept;
    int send_event(const char* event, const void* data, std::uint32_t size) noexcept;
    int set_handler(nuvipc_msg_handler handler, void* ctx) noexcept {
        return receiver_.set_handler(handler, ctx);
    }
    int remove_handler() noexcept { return receiver_.remove_handler(); }
    int add_notifier(const char* event, nuvipc_event_callback callback, void* ctx) noexcept;
    int remove_notifier(const char* event) noexcept;

    const std::string& name() const noexcept { return name_; }
    /// What answers debug commands in its name, and ends before the endpoint does. Null: nothing.
    std::shared_ptr<void>& command_listener() noexcept { return command_listener_; }

    // For its connections.
    int folder() const noexcept { return folder_.get(); }
    /// An event when `event` is not null. The object may be closed by that.
    void deliver(const char* sender, const char* event, void* data, std::uint32_t size) noexcept;
    void forget(const Connection& connection) noexcept;
    struct Place {
        const char* file;
        const char* function;
        int line;
    };
    /// Logs a line about this endpoint, unless it has logged one of this format in the last 10 s.
    [[gnu::format(printf, 3, 4)]] void warn(const Place& place, const char* format, ...) noexcept;

private:
    struct OwnMessage {
        bool is_event;
        std::string event;
        std::vector<std::uint8_t> data;
    };

    int open();
    void close() noexcept;
    bool watch_listener() noexcept;
    void accept_all() noexcept;
    void refuse_one() noexcept;
    void pause() noexcept;
    int transmit(std::string_view peer, Outgoing& outgoing) noexcept;
    Connection* way_to(std::string_view peer);
    int connect(std::string_view peer, Connection*& connection);
    int queue_own(const Frame& frame) noexcept;
    void deliver_own() noexcept;
    int refresh_lists() noexcept;

    const std::string name_;
    UnsharedDescriptor folder_;
    UnsharedDescriptor lock_;
    UnsharedDescriptor listener_;
    UnsharedDescriptor spare_;  // given up to refuse a connection when descriptors run out
    std::uint32_t listener_handle_ = 0;
    ctimerhandle pause_{};  // of a listener that nothing can be accepted from
    ChangeCounter counter_;
    IpcReceiver receiver_;
    std::vector<std::shared_ptr<Connection>> connections_;
    std::map<std::string, std::shared_ptr<Connection>, std::less<>> ways_;  // to send on
    std::vector<EventList> lists_;
    std::uint32_t lists_as_of_ = 0;
    bool lists_read_ = false;
    std::deque<OwnMessage> own_;
    std::uint32_t own_size_ = 0;
    ctimerhandle own_timer_{};
    std::shared_ptr<void> command_listener_;
    std::map<const char*, std::int64_t> warned_;  // by format, when
};

}  // namespace nuv::platform
