// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What the endpoints of this process sent and received last, for people.
namespace nuv::platform {

enum class TraceDirection : std::uint8_t { SENT, RECEIVED };
enum class TraceKind : std::uint8_t { MESSAGE, EVENT };

struct TraceEntry {
    std::int64_t time_ns = 0;  ///< as clock.h counts it, in steps of some milliseconds
    std::string peer;          ///< name of the endpoint at the other end
    std::string event;         ///< name of the event; empty for a message
    TraceDirection direction{};
    TraceKind kind{};
    std::uint32_t size = 0;    ///< octets of data
    int result = 0;            ///< 0 = done, else the negated errno
};

/// The last 64 messages and events, the oldest first.
std::vector<TraceEntry> recent_messages();

/// Messages and events that were accepted or arrived, and that nobody got since then: unread when the
/// receiver died, or received by an endpoint without a handler.
std::uint64_t dropped_messages();

}  // namespace nuv::platform
