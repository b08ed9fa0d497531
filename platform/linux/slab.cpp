// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/slab.h"

#include <cstdint>

#include "nuv_platform/clock.h"
#include "platform/common/allocator.hpp"
#include "platform/linux/watchdog.hpp"

namespace {

// Both the figures and the trimming walk through the whole heap.
[[maybe_unused]] constexpr std::int64_t INTERVAL_NS = 60'000'000'000;
[[maybe_unused]] constexpr std::uint64_t FREE_WORTH_TRIMMING = 131072;

}  // namespace

extern "C" void slab_reap(void) {
    nuv::platform::ride_on_second_pass();
#ifdef NUV_ALLOCATOR_STATISTICS
    static std::int64_t next = nuv_clock_monotonic_ns() + INTERVAL_NS;
    const std::int64_t now = nuv_clock_monotonic_ns();
    if (now >= next) {
        next = now + INTERVAL_NS;
        if (::mallinfo2().fordblks >= FREE_WORTH_TRIMMING) {
            ::malloc_trim(0);
        }
    }
#endif
}
