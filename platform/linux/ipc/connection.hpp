// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/linux/fork.hpp"
#include "platform/linux/ipc/frame.hpp"

namespace nuv::platform {

class Endpoint;

/// A connection of an endpoint to another one. Whichever side made it, both send over it.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    /// `peer`: the endpoint that this side connected to; empty for a connection that it accepted.
    /// Throws std::bad_alloc.
    Connection(Endpoint& endpoint, FileDescriptor socket, std::string peer);
    ~Connection() { close(); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Has the loop call it. False without memory.
    bool watch() noexcept;
    /// 0 or the negated errno.
    int send(Outgoing& outgoing) noexcept;
    bool sends() const noexcept { return is_open() && sends_; }
    /// Nothing more can be sent; what the peer sent before it died can still be read.
    void stop_sending(int error) noexcept;
    void close() noexcept;

    bool is_open() const noexcept { return static_cast<bool>(socket_); }
    /// Whether messages for this endpoint may go here.
    bool leads_to(std::string_view name) noexcept {
        return sends() && peer_ == name && is_believed();
    }

private:
    void read() noexcept;
    bool read_packet() noexcept;
    bool has_room_for_two() const noexcept;
    bool take(const Frame& frame, const FileDescriptor& descriptor);
    bool deliver(const Frame& frame, void* data);
    void confirm() noexcept;
    void lost() noexcept;
    bool refuse(const char* reason) noexcept;
    bool is_believed() noexcept;
    const char* shown_peer() const noexcept;

    // So much large data may wait for its confirmation.
    static constexpr std::uint32_t MAX_UNCONFIRMED = 32U << 20;
    // Of one pass, so that the others get their turn.
    static constexpr int MESSAGES_PER_PASS = 32;

    Endpoint& endpoint_;
    UnsharedDescriptor socket_;
    std::string peer_;       // empty until it has introduced itself
    std::int32_t pid_ = 0;   // of the peer, from the kernel
    bool believed_ = false;  // the peer is the owner of the endpoint `peer_`
    bool sends_ = true;
    bool sent_data_ = false;
    bool waits_for_room_ = false;
    bool descriptor_follows_ = false;
    int skipped_ = 0;  // passes that read one packet and did not look for a second, in a row
    int passes_to_skip_ = 0;
    std::uint32_t handle_ = 0;
    std::uint32_t unconfirmed_ = 0;
    std::uint32_t to_confirm_ = 0;
};

}  // namespace nuv::platform
