// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/ipc/trace.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>

#include "platform/common/ipc_receiver.hpp"

namespace nuv::platform {

namespace {

// Recording must not allocate memory.
struct Name {
    std::array<char, MAX_IPC_NAME> text;
    std::uint8_t size;

    void assign(std::string_view from) noexcept {
        size = static_cast<std::uint8_t>(std::min(from.size(), text.size()));
        std::copy_n(from.begin(), size, text.begin());
    }
    std::string str() const { return {text.data(), size}; }
};

struct Record {
    std::int64_t time_ns;
    std::uint32_t size;
    std::int32_t result;
    TraceDirection direction;
    Name peer;
    Name event;
};

std::array<Record, 64> records{};
std::size_t recorded = 0;
std::uint64_t dropped = 0;

}  // namespace

std::int64_t coarse_now_ns() noexcept {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

void trace_message(TraceDirection direction, std::string_view peer, std::string_view event,
                   std::uint32_t size, int result) noexcept {
    Record& record = records[recorded++ % records.size()];
    record.time_ns = coarse_now_ns();
    record.size = size;
    record.result = result;
    record.direction = direction;
    record.peer.assign(peer);
    record.event.assign(event);
}

void trace_drop() noexcept { ++dropped; }

std::vector<TraceEntry> recent_messages() {
    std::vector<TraceEntry> entries;
    for (std::size_t i = recorded - std::min(recorded, records.size()); i < recorded; ++i) {
        const Record& record = records[i % records.size()];
        entries.push_back({record.time_ns, record.peer.str(), record.event.str(), record.direction,
                           record.event.size == 0 ? TraceKind::MESSAGE : TraceKind::EVENT,
                           record.size, record.result});
    }
    return entries;
}

std::uint64_t dropped_messages() { return dropped; }

}  // namespace nuv::platform
