// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/clock.h"

#include <stdexcept>

#include "nuv_platform/fake/fake_platform.hpp"

namespace nuv::platform {

FakeClock::FakeClock(std::vector<std::string>& shared_journal) : FakeService(shared_journal, {}) {}

void FakeClock::advance(std::chrono::nanoseconds duration) {
    if (duration.count() < 0) {
        throw std::invalid_argument("a monotonic clock does not go back");
    }
    now_ns_ += duration.count();
}

}  // namespace nuv::platform

extern "C" int64_t nuv_clock_monotonic_ns(void) {
    if (auto* const fake = nuv::platform::FakePlatform::current()) {
        return fake->clock().read().count();
    }
    static constinit std::atomic<std::int64_t> readings{0};
    return ++readings;
}
