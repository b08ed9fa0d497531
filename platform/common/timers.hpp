// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "nuv_platform/ctimer.h"

namespace nuv::platform {

/// The armed timers of a loop: a 4-ary heap by end. A timer's time begins to count with the next
/// start() only, so arming one and removing it again costs neither a reading of the clock nor a place
/// in the heap. Results are those of ctimer.h.
class Timers {
public:
    static constexpr std::int64_t NEVER = std::numeric_limits<std::int64_t>::max();

    struct Due {
        ctimerhandle* handle = nullptr;
        ctimer_callback_fn callback = nullptr;
        void* cbdata = nullptr;
    };

    int arm(ctimerhandle* handle, std::int64_t duration_ns, ctimer_callback_fn callback,
            void* cbdata) noexcept;
    int disarm(ctimerhandle* handle) noexcept;
    /// Stores the end in nanoseconds. A timer whose time does not count yet must not be there: start()
    /// comes before.
    int end(const ctimerhandle* handle, std::int64_t& end_ns) const noexcept;

    /// The timers armed since the last call count from `now_ns` on.
    void start(std::int64_t now_ns) noexcept;
    bool any_to_start() const noexcept { return !fresh_.empty(); }
    /// When the next one ends, or NEVER. Timers that do not count yet are left out.
    std::int64_t next_end() const noexcept { return heap_.empty() ? NEVER : heap_.front().end; }
    /// Takes out the timer with the earliest end, if that is not after `now_ns`. Its handle is no
    /// longer active.
    bool take_due(std::int64_t now_ns, Due& due) noexcept;

    std::size_t size() const noexcept { return heap_.size() + fresh_.size(); }

private:
    struct Slot {
        ctimerhandle* handle = nullptr;  // null: free
        ctimer_callback_fn callback = nullptr;
        void* cbdata = nullptr;
        std::uint32_t order = 0;  // counts all armings
        std::uint32_t place =
            0;  // index in heap_, or FRESH and index in fresh_; free: the next one
    };
    struct Entry {
        std::int64_t end;  // of fresh ones: the duration
        std::uint32_t order;
        std::uint32_t slot;

        bool operator<(const Entry& other) const noexcept {
            return end != other.end ? end < other.end
                                    : static_cast<std::int32_t>(order - other.order) < 0;
        }
    };
    enum class Found { ARMED, IDLE, ZEROED, UNKNOWN, COPY };

    Found find(const ctimerhandle* handle, std::uint32_t& slot) const noexcept;
    void put(std::size_t place, const Entry& entry) noexcept;
    void sift_up(std::size_t place, Entry entry) noexcept;
    void sift_down(std::size_t place, Entry entry) noexcept;
    void take_from_heap(std::size_t place) noexcept;
    void release(std::uint32_t slot) noexcept;

    std::vector<Slot> slots_;
    std::vector<Entry> heap_;
    std::vector<Entry> fresh_;
    std::uint32_t first_free_ = NONE;
    std::uint32_t armings_ = 0;

    static constexpr std::uint32_t NONE = 0xffff'ffff;
    static constexpr std::uint32_t FRESH = 0x8000'0000;
};

}  // namespace nuv::platform
