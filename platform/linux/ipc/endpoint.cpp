// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/ipc/endpoint.hpp"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

#include "nuv_platform/clog.h"
#include "platform/linux/ipc/runtime_folder.hpp"
#include "platform/linux/ipc/trace.hpp"
#include "platform/linux/loop.hpp"

namespace nuv::platform {

namespace {

constexpr const char* FILE_NAME = "platform/linux/ipc/endpoint";
constexpr int ACCEPTS_PER_PASS = 16;
constexpr std::int64_t WARN_INTERVAL_NS = 10'000'000'000;
// Of an endpoint's messages to itself, what the kernel and the confirmations are for others.
constexpr std::size_t MAX_OWN_MESSAGES = 256;
constexpr std::uint32_t MAX_OWN_SIZE = 32U << 20;

std::vector<std::shared_ptr<Endpoint>>& living() {
    static std::vector<std::shared_ptr<Endpoint>> endpoints;
    return endpoints;
}

void log_failure(const char* name, const char* reason) noexcept {
    clogmod__err(clogmod_get_or_alloc("nuvipc"), FILE_NAME, "create", __LINE__,
                 "endpoint \"%s\" cannot be created: %s", name, reason);
}

bool is_removed(int folder) noexcept {
    struct stat status {};
    return ::fstat(folder, &status) == 0 && status.st_nlink == 0;
}

/// A descriptor that children need not know, except that they close it.
FileDescriptor duplicate(int fd) noexcept {
    return FileDescriptor(::fcntl(fd, F_DUPFD_CLOEXEC, 0));
}

}  // namespace

Endpoint* Endpoint::create(const char* name, int& error) noexcept {
    try {
        const auto endpoint = std::make_shared<Endpoint>(name != nullptr ? name : "");
        error = endpoint->open();
        if (error != 0) {
            return nullptr;
        }
        living().push_back(endpoint);
        return endpoint.get();
    } catch (const std::bad_alloc&) {
        error = -ENOMEM;
        log_failure(name, std::strerror(ENOMEM));
        return nullptr;
    }
}

void Endpoint::destroy(Endpoint& endpoint) noexcept {
    const auto self = endpoint.shared_from_this();
    std::erase(living(), self);
    endpoint.close();
}

void Endpoint::write_pids() noexcept {
    for (const auto& endpoint : living()) {
        write_pid(endpoint->lock_.get());
    }
}

/// Returns 0, or the negated errno of what was logged.
int Endpoint::open() {
    const auto failed = [this](int error, const char* reason) {
        log_failure(name_.c_str(), reason != nullptr ? reason : std::strerror(error));
        return -error;
    };
    if (!is_endpoint_name(name_)) {
        return failed(EINVAL, "this is not a name for an endpoint");
    }
    if (process_loop().is_abandoned()) {
        return failed(ECHILD, "the event loop is that of the parent process");
    }
    if (!process_loop().is_open()) {
        return failed(EINVAL, "the event loop is not open");
    }
    RuntimeFolder folder = open_runtime_folder();
    if (!folder.fd) {
        return failed(-folder.error, folder.reason.c_str());
    }
    folder_ = UnsharedDescriptor(std::move(folder.fd));
    lock_ = UnsharedDescriptor(lock_name(folder_.get(), name_));
    if (!lock_) {
        return failed(errno, errno == EADDRINUSE ? "it has a living owner" : nullptr);
    }
    int error = counter_.open(folder_.get());
    if (error == 0) {
        error = write_event_list(folder_.get(), name_, {});
    }
    if (error != 0) {
        return failed(-error, nullptr);
    }
    counter_.raise();
    spare_ = UnsharedDescriptor(duplicate(folder_.get()));
    listener_ = UnsharedDescriptor(listen_in(folder_.get(), name_, SOCK_SEQPACKET));
    if (!spare_ || !listener_) {
        return failed(errno, nullptr);
    }
    if (!watch_listener()) {
        return failed(ENOMEM, nullptr);
    }
    return 0;
}

void Endpoint::close() noexcept {
    command_listener_.reset();
    receiver_.clear();
    process_loop().disarm(&own_timer_);
    process_loop().disarm(&pause_);
    process_loop().remove(std::exchange(listener_handle_, 0));
    ways_.clear();
    for (const auto& connection : std::exchange(connections_, {})) {
        connection->close();
    }
    own_.clear();
    if (listener_) {  // while it has the lock, the names are its own
        ::unlinkat(folder_.get(), name_.c_str(), 0);
        write_event_list(folder_.get(), name_, {});
    }
    listener_.reset();
    lock_.reset();
    spare_.reset();
    folder_.reset();
}

void Endpoint::warn(const Place& place, const char* format, ...) noexcept {
    try {
        const std::int64_t now = coarse_now_ns();
        const auto [last, first] = warned_.try_emplace(format, now);
        if (!first && now - last->second < WARN_INTERVAL_NS) {
            return;
        }
        last->second = now;
    } catch (const std::bad_alloc&) {  // the line is short of nothing
    }
    std::array<char, 512> text{};
    std::va_list args;
    va_start(args, format);
    std::vsnprintf(text.data(), text.size(), format, args);
    va_end(args);
    clogmod__warn(clogmod_get_or_alloc("nuvipc"), place.file, place.function, place.line,
                  "endpoint \"%s\": %s", name_.c_str(), text.data());
}

// -- Being connected to

bool Endpoint::watch_listener() noexcept {
    const auto acceptable = [](int /*fd*/, void* ctx) {
        static_cast<Endpoint*>(ctx)->accept_all();
        return 0;
    };
    listener_handle_ = process_loop().add(listener_.get(), "nuvipc listener",
                                          {acceptable, nullptr, nullptr, nullptr}, this);
    return listener_handle_ != 0;
}

void Endpoint::accept_all() noexcept {
    for (int i = 0; i < ACCEPTS_PER_PASS; ++i) {
        FileDescriptor fd(
            ::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!fd && (errno == EMFILE || errno == ENFILE)) {
            refuse_one();
            return;
        }
        if (!fd && errno != EINTR && errno != ECONNABORTED) {
            return;
        }
        if (!fd) {
            continue;
        }
        if (!peer_may_talk(folder_.get(), fd.get())) {
            warn({FILE_NAME, __func__, __LINE__}, "refused a stranger");
            continue;
        }
        try {
            connections_.push_back(
                std::make_shared<Connection>(*this, std::move(fd), std::string()));
            if (!connections_.back()->watch()) {
                connections_.pop_back();
            }
        } catch (const std::bad_alloc&) {
            warn({FILE_NAME, __func__, __LINE__}, "no memory for a connection");
        }
    }
}

/// Without this a connection that cannot be accepted would wake the loop for ever.
void Endpoint::refuse_one() noexcept {
    warn({FILE_NAME, __func__, __LINE__}, "refused a connection: %s", std::strerror(errno));
    try {
        spare_.reset();
        FileDescriptor(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC)).reset();
        spare_ = UnsharedDescriptor(duplicate(folder_.get()));
    } catch (const std::bad_alloc&) {  // there is none, then
    }
    if (!spare_) {  // another thread was faster
        pause();
    }
}

void Endpoint::pause() noexcept {
    const auto resume = [](ctimerhandle* /*handle*/, void* ctx) {
        auto& self = *static_cast<Endpoint*>(ctx);
        try {
            self.spare_ = UnsharedDescriptor(duplicate(self.folder_.get()));
        } catch (const std::bad_alloc&) {  // the next time
        }
        if (!self.watch_listener()) {
            self.pause();
        }
    };
    process_loop().remove(std::exchange(listener_handle_, 0));
    process_loop().arm(&pause_, 1, 1, resume, this);
}

void Endpoint::forget(const Connection& connection) noexcept {
    std::erase_if(ways_, [&](const auto& way) { return way.second.get() == &connection; });
    std::erase_if(connections_,
                  [&](const auto& candidate) { return candidate.get() == &connection; });
}

void Endpoint::deliver(const char* sender, const char* event, void* data,
                       std::uint32_t size) noexcept {
    // The arguments and the object may be gone after the call.
    trace_message(TraceDirection::RECEIVED, sender, event != nullptr ? event : "", size, 0);
    const bool taken = event != nullptr ? receiver_.event(handle(), event, data, size)
                                        : receiver_.message(handle(), sender, data, size);
    if (!taken && event == nullptr) {
        trace_drop();
    }
}

// -- Sending

int Endpoint::send(const char* destination, const void* data, std::uint32_t size) noexcept {
    if (destination == nullptr || (data == nullptr && size > 0)) {
        return -EINVAL;
    }
    Outgoing outgoing{{FrameKind::MESSAGE, {}, data, size}};
    int result = -EMSGSIZE;
    if (size <= NUVIPC_MAX_SIZE) {
        result = destination == name_ ? queue_own(outgoing.frame) : transmit(destination, outgoing);
    }
    trace_message(TraceDirection::SENT, destination, {}, size, result);
    return result;
}

int Endpoint::send_event(const char* event, const void* data, std::uint32_t size) noexcept {
    if (event == nullptr || !is_event_name(event) || (data == nullptr && size > 0)) {
        return -EINVAL;
    }
    if (size > NUVIPC_MAX_SIZE) {
        return -EMSGSIZE;
    }
    if (const int error = refresh_lists()) {
        return error;
    }
    Outgoing outgoing{{FrameKind::EVENT, event, data, size}};
    int result = 0;
    const char* const function = __func__;
    const auto sent = [&](const std::string& peer, int error) {
        trace_message(TraceDirection::SENT, peer, event, size, error);
        if (error < 0) {
            warn({FILE_NAME, function, __LINE__}, "event \"%s\" was not sent to \"%s\": %s", event,
                 peer.c_str(), std::strerror(-error));
            result = error;
        }
    };
    if (receiver_.wants(event)) {
        sent(name_, queue_own(outgoing.frame));
    }
    for (EventList& list : lists_) {
        const bool wanted =
            std::any_of(list.events.begin(), list.events.end(), [&](const std::string& name) {
                return name == outgoing.frame.name || name == ALL_EVENTS;
            });
        if (!wanted || list.unreachable) {
            continue;
        }
        const int error = transmit(list.endpoint, outgoing);
        // Dead, or nobody to talk to: it registers again once that has changed.
        list.unreachable = error == -ENOENT || error == -ECONNREFUSED || error == -EACCES;
        if (!list.unreachable) {
            sent(list.endpoint, error);
        }
    }
    return result;
}

int Endpoint::transmit(std::string_view peer, Outgoing& outgoing) noexcept {
    try {
        for (int connects = 0;;) {
            Connection* connection = way_to(peer);
            if (connection == nullptr) {
                if (connects++ == 2) {
                    return -ECONNREFUSED;  // it goes away as soon as it is there
                }
                if (const int error = connect(peer, connection)) {
                    return error;
                }
            }
            const int result = connection->send(outgoing);
            if (result != -EPIPE && result != -ECONNRESET && result != -ENOTCONN) {
                return result;
            }
            connection->stop_sending(result);
        }
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

/// Null when there is no connection yet.
Connection* Endpoint::way_to(std::string_view peer) {
    const auto known = ways_.find(peer);
    if (known != ways_.end() && known->second->sends()) {
        return known->second.get();
    }
    for (const auto& connection : connections_) {
        if (connection->leads_to(peer)) {
            ways_.insert_or_assign(std::string(peer), connection);
            return connection.get();
        }
    }
    return nullptr;
}

int Endpoint::connect(std::string_view peer, Connection*& connection) {
    if (!is_endpoint_name(peer)) {
        return -EINVAL;
    }
    const std::string name(peer);
    FileDescriptor socket = connect_in(folder_.get(), name, SOCK_SEQPACKET);
    if (!socket) {
        if (errno == ENOENT && is_removed(folder_.get())) {
            warn({FILE_NAME, __func__, __LINE__},
                 "\"%s\" cannot be found: the runtime folder was removed", name.c_str());
            return -ENOENT;
        }
        // Not one of ours behind the name.
        return errno == EPROTOTYPE ? -ECONNREFUSED : -errno;
    }
    if (!peer_may_talk(folder_.get(), socket.get())) {
        return -EACCES;
    }
    const auto made = std::make_shared<Connection>(*this, std::move(socket), name);
    Outgoing hello{{FrameKind::HELLO, name_}};
    if (const int error = made->send(hello)) {
        return error == -EPIPE || error == -ECONNRESET ? -ECONNREFUSED : error;
    }
    connections_.reserve(connections_.size() + 1);
    ways_.insert_or_assign(name, made);
    if (!made->watch()) {
        ways_.erase(name);
        return -ENOMEM;
    }
    connections_.push_back(made);
    connection = made.get();
    return 0;
}

// -- Events

int Endpoint::refresh_lists() noexcept {
    const std::uint32_t now = counter_.value();
    if (lists_read_ && now == lists_as_of_) {
        return 0;
    }
    std::vector<EventList> lists;
    if (const int error = read_event_lists(folder_.get(), lists)) {
        return error;
    }
    std::erase_if(lists, [this](const EventList& list) { return list.endpoint == name_; });
    lists_ = std::move(lists);
    lists_as_of_ = now;
    lists_read_ = true;
    return 0;
}

int Endpoint::add_notifier(const char* event, nuvipc_event_callback callback, void* ctx) noexcept {
    if (const int error = receiver_.may_add_notifier(event, callback)) {
        return error;
    }
    try {
        receiver_.add_notifier(event, callback, ctx);
        const int error = write_event_list(folder_.get(), name_, receiver_.events());
        if (error == 0) {
            counter_.raise();
            return 0;
        }
        receiver_.remove_notifier(event);
        warn({FILE_NAME, __func__, __LINE__}, "event \"%s\" cannot be registered: %s", event,
             is_removed(folder_.get()) ? "the runtime folder was removed" : std::strerror(-error));
        return error;
    } catch (const std::bad_alloc&) {
        if (event != nullptr) {
            receiver_.remove_notifier(event);
        }
        return -ENOMEM;
    }
}

int Endpoint::remove_notifier(const char* event) noexcept {
    const int result = receiver_.remove_notifier(event);
    try {
        // A list that could not be written names too many events; they are ignored when they come.
        if (result == 0 && write_event_list(folder_.get(), name_, receiver_.events()) == 0) {
            counter_.raise();
        }
    } catch (const std::bad_alloc&) {  // as above
    }
    return result;
}

// -- To itself

int Endpoint::queue_own(const Frame& frame) noexcept {
    if (own_.size() >= MAX_OWN_MESSAGES || frame.size > MAX_OWN_SIZE - own_size_) {
        return -EAGAIN;
    }
    const auto due = [](ctimerhandle* /*handle*/, void* ctx) {
        static_cast<Endpoint*>(ctx)->deliver_own();
    };
    try {
        const auto* const data = static_cast<const std::uint8_t*>(frame.data);
        own_.push_back({frame.kind == FrameKind::EVENT, std::string(frame.name),
                        std::vector<std::uint8_t>(data, data + frame.size)});
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
    if (own_timer_.active == 0 && process_loop().arm(&own_timer_, 0, 1, due, this) != 0) {
        own_.pop_back();
        return -ENOMEM;
    }
    own_size_ += frame.size;
    return 0;
}

void Endpoint::deliver_own() noexcept {
    const auto self = shared_from_this();
    // What the handlers send meanwhile is for a later pass.
    for (std::size_t left = own_.size(); left > 0 && !own_.empty() && !inherited(); --left) {
        OwnMessage message = std::move(own_.front());
        own_.pop_front();
        own_size_ -= static_cast<std::uint32_t>(message.data.size());
        deliver(name_.c_str(), message.is_event ? message.event.c_str() : nullptr,
                message.data.data(), static_cast<std::uint32_t>(message.data.size()));
    }
}

}  // namespace nuv::platform
