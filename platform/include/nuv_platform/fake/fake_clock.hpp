// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

/// The virtual clock of the test double. It starts at 0 and moves by advance(), and by 1 ns with each
/// reading of nuv_clock_monotonic_ns(), so that no two readings are equal. Log records show the same
/// time, counted from 1970-01-01 00:00 UTC, and do not move it. No call of it can be refused.
class NUV_PLATFORM_EXPORT FakeClock final : public FakeService {
public:
    explicit FakeClock(std::vector<std::string>& shared_journal);

    /// Moves the clock forward. Throws std::invalid_argument when `duration` is negative.
    void advance(std::chrono::nanoseconds duration);

    /// The time without moving the clock: that of the last reading, unless the clock was advanced
    /// since. Any thread.
    std::chrono::nanoseconds now() const noexcept { return std::chrono::nanoseconds(now_ns_); }

    /// For the fake's C functions: a reading. Any thread.
    std::chrono::nanoseconds read() noexcept { return std::chrono::nanoseconds(++now_ns_); }

private:
    std::atomic<std::int64_t> now_ns_{0};
};

}  // namespace nuv::platform
