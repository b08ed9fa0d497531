// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/ipc/connection.hpp"

#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <span>
#include <utility>

#include "platform/linux/ipc/endpoint.hpp"
#include "platform/linux/ipc/large_data.hpp"
#include "platform/linux/ipc/registry.hpp"
#include "platform/linux/ipc/trace.hpp"
#include "platform/linux/loop.hpp"

namespace nuv::platform {

namespace {

constexpr const char* FILE_NAME = "platform/linux/ipc/connection";

// One for all connections, since a handler cannot wait. Data begins at a multiple of 8.
alignas(16) std::array<std::uint8_t, MAX_FRAME_SIZE> packet_buffer;

/// A control message of one descriptor.
struct alignas(cmsghdr) Control {
    std::array<char, CMSG_SPACE(sizeof(int))> octets{};
};

iovec io(const void* data, std::size_t size) noexcept {
    return {const_cast<void*>(data), size};  // NOLINT: sendmsg() does not write to it
}

/// Sends one packet, with the descriptor if it is one. Below 0: errno.
ssize_t send_parts(int socket, std::span<iovec> parts, int fd) noexcept {
    std::array<char, 2048> small;  // NOLINT: a packet, once it is copied
    std::size_t size = 0;
    for (const iovec& part : parts) {
        if (part.iov_len > small.size() - size) {
            size = small.size();
            break;
        }
        std::copy_n(static_cast<const char*>(part.iov_base), part.iov_len, small.data() + size);
        size += part.iov_len;
    }
    if (fd < 0 && size < small.size()) {  // less work for the kernel than a packet in pieces
        return ::send(socket, small.data(), size, MSG_NOSIGNAL | MSG_DONTWAIT);
    }
    msghdr message{};
    message.msg_iov = parts.data();
    message.msg_iovlen = parts.size();
    Control control;
    if (fd >= 0) {
        message.msg_control = control.octets.data();
        message.msg_controllen = CMSG_LEN(sizeof fd);
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof fd);
        std::memcpy(CMSG_DATA(header), &fd, sizeof fd);
    }
    return ::sendmsg(socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
}

/// recvmsg() of one packet and at most one descriptor; `flags` as that returns them.
ssize_t receive_with_descriptor(int socket, FileDescriptor& descriptor, int& flags) noexcept {
    Control control;
    iovec part = io(packet_buffer.data(), packet_buffer.size());
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.octets.data();
    message.msg_controllen = CMSG_LEN(sizeof(int));  // CMSG_SPACE() has room for two
    const ssize_t length = ::recvmsg(socket, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC | MSG_TRUNC);
    flags = message.msg_flags;
    const cmsghdr* const header = length >= 0 ? CMSG_FIRSTHDR(&message) : nullptr;
    if (header != nullptr && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS) {
        int fd = -1;
        std::memcpy(&fd, CMSG_DATA(header), sizeof fd);
        descriptor = FileDescriptor(fd);
    }
    return length;
}

std::int32_t peer_pid(int socket) noexcept {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 ? peer.pid : 0;
}

}  // namespace

Connection::Connection(Endpoint& endpoint, FileDescriptor socket, std::string peer)
    : endpoint_(endpoint),
      socket_(std::move(socket)),
      peer_(std::move(peer)),
      pid_(peer_pid(socket_.get())) {
    is_believed();
}

bool Connection::watch() noexcept {
    const csock_fd_callback readable = [](int /*fd*/, void* ctx) {
        static_cast<Connection*>(ctx)->read();
        return 0;
    };
    const csock_fd_callback writable = [](int /*fd*/, void* ctx) {
        const auto self = static_cast<Connection*>(ctx)->shared_from_this();
        self->confirm();
        return 0;
    };
    if (handle_ != 0) {
        process_loop().remove(handle_);
    }
    handle_ = process_loop().add(socket_.get(), "nuvipc connection",
                                 {readable, waits_for_room_ ? writable : nullptr, nullptr, nullptr},
                                 this);
    return handle_ != 0;
}

bool Connection::is_believed() noexcept {
    if (!believed_ && !peer_.empty()) {
        believed_ = pid_ != 0 && owner_of(endpoint_.folder(), peer_).pid == pid_;
    }
    return believed_;
}

const char* Connection::shown_peer() const noexcept {
    return peer_.empty() ? "(unknown)" : peer_.c_str();
}

int Connection::send(Outgoing& outgoing) noexcept {
    const Frame& frame = outgoing.frame;
    if (frame.large() && frame.size > MAX_UNCONFIRMED - unconfirmed_) {
        return -EAGAIN;
    }
    if (frame.large()) {
        if (!outgoing.large) {
            outgoing.large = make_large_data(frame.data, frame.size);
        }
        if (!outgoing.large) {
            return -errno;
        }
        // Announced, since to be ready for descriptors in each packet is expensive.
        Outgoing announcement{{FrameKind::DESCRIPTOR, {}}};
        if (const int error = has_room_for_two() ? send(announcement) : -EAGAIN) {
            return error;
        }
    }
    const auto header = frame.header();
    std::array parts = {io(header.data(), header.size()), io(frame.data, frame.inline_size()),
                        io(frame.name.data(), frame.name.size())};
    if (send_parts(socket_.get(), parts, outgoing.large.get()) < 0) {
        // The kernel limits the descriptors in its queues, too.
        const int error = errno == ETOOMANYREFS || errno == ENOBUFS ? -EAGAIN : -errno;
        Outgoing nothing{{FrameKind::CONFIRM, {}}};
        if (frame.large() && send(nothing) != 0) {  // takes the place of what was announced
            stop_sending(error);
        }
        return error;
    }
    unconfirmed_ += frame.large() ? frame.size : 0;
    sent_data_ = sent_data_ || frame.kind == FrameKind::MESSAGE || frame.kind == FrameKind::EVENT;
    return 0;
}

bool Connection::has_room_for_two() const noexcept {
    constexpr int ROOM = 4096;  // of the kernel's for two small packets
    int limit = 0;
    int used = 0;
    socklen_t size = sizeof limit;
    return ::getsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &limit, &size) == 0 &&
           ::ioctl(socket_.get(), SIOCOUTQ, &used) == 0 && used + ROOM <= limit;
}

void Connection::stop_sending(int error) noexcept {
    sends_ = false;
    if (sent_data_ && error == -ECONNRESET) {
        sent_data_ = false;
        unconfirmed_ = 0;
        trace_drop();
        endpoint_.warn({FILE_NAME, __func__, __LINE__},
                       "\"%s\" has gone without reading all that was sent to it", shown_peer());
    }
}

void Connection::lost() noexcept {
    // Taken from the queue, and not handled.
    stop_sending(unconfirmed_ > 0 ? -ECONNRESET : 0);
    close();
    endpoint_.forget(*this);
}

void Connection::close() noexcept {
    process_loop().remove(std::exchange(handle_, 0));
    socket_.reset();
}

bool Connection::refuse(const char* reason) noexcept {
    endpoint_.warn({FILE_NAME, __func__, __LINE__}, "closed the connection with \"%s\": %s",
                   shown_peer(), reason);
    lost();
    return false;
}

void Connection::read() noexcept {
    const auto self = shared_from_this();
    const auto endpoint = endpoint_.shared_from_this();
    int packets = 0;
    while (packets < MESSAGES_PER_PASS && is_open()) {
        // To look for a second packet is a system call. Where there was none, the next passes do not.
        if (packets == 1 && passes_to_skip_ > 0) {
            --passes_to_skip_;
            return;
        }
        if (!read_packet()) {
            break;
        }
        ++packets;
    }
    skipped_ = packets > 1 ? 0 : std::min(2 * skipped_ + 1, 15);
    passes_to_skip_ = skipped_;
}

/// Returns whether there may be more.
bool Connection::read_packet() noexcept {
    FileDescriptor descriptor;
    int flags = 0;
    const ssize_t length = descriptor_follows_
                               ? receive_with_descriptor(socket_.get(), descriptor, flags)
                               : ::recv(socket_.get(), packet_buffer.data(), packet_buffer.size(),
                                        MSG_DONTWAIT | MSG_TRUNC);
    if (length < 0 && errno == ECONNRESET) {
        // The peer died with unread packets. What it sent before can be read still.
        stop_sending(-ECONNRESET);
        return true;
    }
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return false;
    }
    if (length <= 0) {
        lost();
        return false;
    }
    descriptor_follows_ = false;
    if ((flags & MSG_CTRUNC) != 0) {
        return refuse("a descriptor was lost, perhaps too many are open");
    }
    const auto size = static_cast<std::size_t>(length);
    const auto frame =
        size <= packet_buffer.size() ? parse_frame({packet_buffer.data(), size}) : std::nullopt;
    if (!frame || frame->large() != static_cast<bool>(descriptor)) {
        return refuse("what it sends is not understood");
    }
    try {
        return take(*frame, descriptor);
    } catch (const std::bad_alloc&) {
        return refuse("no memory");
    }
}

/// Returns whether the connection is still there.
bool Connection::take(const Frame& frame, const FileDescriptor& descriptor) {
    if ((frame.kind == FrameKind::HELLO) != peer_.empty()) {
        return refuse("it did not introduce itself once and first");
    }
    if (frame.kind == FrameKind::HELLO) {
        peer_ = frame.name;
        is_believed();
        return true;
    }
    if (frame.kind == FrameKind::DESCRIPTOR) {
        descriptor_follows_ = true;
        return true;
    }
    if (frame.kind == FrameKind::CONFIRM) {
        if (frame.size > unconfirmed_) {
            return refuse("it confirms what was not sent");
        }
        unconfirmed_ -= frame.size;
        return true;
    }
    if (!frame.large()) {
        return deliver(frame, const_cast<void*>(frame.data));  // NOLINT: in our buffer
    }
    LargeData large;
    const int error = large.map(descriptor.get(), frame.size);
    if (error != 0) {
        return refuse(error == -EBADMSG ? "its data is not sealed, or not of the size it says"
                                        : std::strerror(-error));
    }
    if (!deliver(frame, large.get())) {
        return false;
    }
    to_confirm_ += frame.size;
    confirm();
    return is_open();
}

bool Connection::deliver(const Frame& frame, void* data) {
    // The name is in the buffer, too, without a NUL.
    std::array<char, MAX_IPC_NAME + 1> event{};
    std::copy(frame.name.begin(), frame.name.end(), event.begin());
    endpoint_.deliver(is_believed() ? peer_.c_str() : "",
                      frame.kind == FrameKind::EVENT ? event.data() : nullptr, data, frame.size);
    return is_open();
}

void Connection::confirm() noexcept {
    if (to_confirm_ == 0 || !sends_) {
        return;
    }
    Outgoing outgoing{{FrameKind::CONFIRM, {}, nullptr, to_confirm_}};
    const int error = send(outgoing);
    if (error == 0) {
        to_confirm_ = 0;
    }
    const bool wait = error == -EAGAIN;
    if (wait != waits_for_room_) {
        waits_for_room_ = wait;
        if (!watch()) {
            lost();
        }
    }
}

}  // namespace nuv::platform
