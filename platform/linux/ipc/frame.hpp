// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/common/file_descriptor.hpp"
#include "platform/common/ipc_receiver.hpp"

/// What goes over a connection: one frame per packet, never an empty one. An 8-octet header (kind,
/// length of the name, 1 when the data is in the descriptor that comes along, 0, size in four octets,
/// least significant first), the data, the name.
namespace nuv::platform {

enum class FrameKind : std::uint8_t {
    HELLO = 1,  ///< the first one of the side that connected; name: its endpoint
    MESSAGE,
    EVENT,      ///< name: of the event
    CONFIRM,    ///< `size` octets of large data have been handled
    DESCRIPTOR  ///< the next packet may carry a descriptor; of all others it is closed unseen
};

inline constexpr std::size_t FRAME_HEADER_SIZE = 8;
/// Larger data goes in a descriptor.
inline constexpr std::uint32_t MAX_INLINE_SIZE = 65536;
inline constexpr std::size_t MAX_FRAME_SIZE = FRAME_HEADER_SIZE + MAX_INLINE_SIZE + MAX_IPC_NAME;

struct Frame {
    FrameKind kind{};
    std::string_view name;
    const void* data = nullptr;
    std::uint32_t size = 0;

    bool large() const noexcept { return size > MAX_INLINE_SIZE && kind != FrameKind::CONFIRM; }
    std::size_t inline_size() const noexcept {
        return large() || kind == FrameKind::CONFIRM ? 0 : size;
    }
    std::array<std::uint8_t, FRAME_HEADER_SIZE> header() const noexcept;
};

/// What is sent, for all its receivers.
struct Outgoing {
    Frame frame;
    FileDescriptor large{};  ///< large data, from its first sending on
};

/// None when the packet is no frame.
std::optional<Frame> parse_frame(std::span<const std::uint8_t> packet) noexcept;

}  // namespace nuv::platform
