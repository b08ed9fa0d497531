// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_clock.hpp"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

class Loop;

/// The event loop and the timers of the test double. It looks at real descriptors, but never sleeps:
/// when none is ready, the wait moves the clock to the next timer, or by its timeout. A wait that
/// would last for ever throws std::logic_error, which is how the test fails.
///
/// Refusable: `csock_init`, `csock_add_fd` (any result stands for 0), `csock_remove_fd`,
/// `csock_fd_blocking`, `csock_select_with_msecs` and the three `ctimer_..._internal`.
class NUV_PLATFORM_EXPORT FakeLoop final : public FakeService {
public:
    FakeLoop(std::vector<std::string>& shared_journal, FakeClock& clock);
    ~FakeLoop();

    /// The names of the registered descriptors, by descriptor.
    std::vector<std::string> registered() const;
    std::size_t armed_timers() const noexcept;

    /// What the library left open, registered or armed, in words.
    std::vector<std::string> leftovers() const;

    /// For the fake's C functions.
    Loop& loop() noexcept { return *loop_; }

private:
    std::unique_ptr<Loop> loop_;
};

}  // namespace nuv::platform
