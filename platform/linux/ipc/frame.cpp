// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/ipc/frame.hpp"

#include "nuv_platform/nuvipc.h"

namespace nuv::platform {

std::array<std::uint8_t, FRAME_HEADER_SIZE> Frame::header() const noexcept {
    const auto octet = [this](unsigned shift) { return static_cast<std::uint8_t>(size >> shift); };
    return {static_cast<std::uint8_t>(kind),
            static_cast<std::uint8_t>(name.size()),
            static_cast<std::uint8_t>(large()),
            0,
            octet(0),
            octet(8),
            octet(16),
            octet(24)};
}

std::optional<Frame> parse_frame(std::span<const std::uint8_t> packet) noexcept {
    if (packet.size() < FRAME_HEADER_SIZE) {
        return std::nullopt;
    }
    Frame frame;
    frame.kind = static_cast<FrameKind>(packet[0]);
    for (unsigned i = 0; i < 4; ++i) {
        frame.size |= static_cast<std::uint32_t>(packet[4 + i]) << (8 * i);
    }
    const std::size_t name_size = packet[1];
    if ((frame.size > NUVIPC_MAX_SIZE && frame.kind != FrameKind::CONFIRM) ||
        packet.size() != FRAME_HEADER_SIZE + frame.inline_size() + name_size) {
        return std::nullopt;
    }
    frame.data = packet.data() + FRAME_HEADER_SIZE;
    frame.name = {reinterpret_cast<const char*>(packet.data()) + packet.size() - name_size,
                  name_size};
    bool good = false;
    switch (frame.kind) {
        case FrameKind::DESCRIPTOR:
            good = frame.size == 0 && frame.name.empty();
            break;
        case FrameKind::HELLO:
            good = frame.size == 0 && is_endpoint_name(frame.name);
            break;
        case FrameKind::EVENT:
            good = is_event_name(frame.name);
            break;
        case FrameKind::MESSAGE:
        case FrameKind::CONFIRM:
            good = frame.name.empty();
            break;
    }
    return good && packet[2] == static_cast<std::uint8_t>(frame.large())
               ? std::optional<Frame>(frame)
               : std::nullopt;
}

}  // namespace nuv::platform
