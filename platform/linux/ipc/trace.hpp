// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
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
    std::uint32_t size = 0;  ///< octets of data
    int result = 0;          ///< 0 = done, else the negated errno
};

/// The last 64 messages and events, the oldest first.
std::vector<TraceEntry> recent_messages();

/// Messages and events that were accepted or arrived, and that nobody got since then: unread when the
/// receiver died, or received by an endpoint without a handler. How many a dead receiver had not read
/// is unknown; each time counts as 1.
std::uint64_t dropped_messages();

void trace_message(TraceDirection direction, std::string_view peer, std::string_view event,
                   std::uint32_t size, int result) noexcept;
void trace_drop() noexcept;

/// CLOCK_MONOTONIC in steps of some milliseconds, in nanoseconds: cheaper than an exact reading.
std::int64_t coarse_now_ns() noexcept;

}  // namespace nuv::platform
