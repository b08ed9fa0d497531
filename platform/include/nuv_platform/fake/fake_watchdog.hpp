// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

/// The watchdog of the test double. Nobody wants its signs of life. Refusable: `watchdog_csock_init`.
class NUV_PLATFORM_EXPORT FakeWatchdog final : public FakeService {
public:
    explicit FakeWatchdog(std::vector<std::string>& shared_journal);

    /// A watchdog that was not ended, in words.
    std::vector<std::string> leftovers() const;

    /// For the fake's C functions: the calls of watchdog_csock_init() without one of
    /// watchdog_csock_exit().
    std::vector<std::string>& begun() noexcept { return begun_; }

private:
    std::vector<std::string> begun_;
};

}  // namespace nuv::platform
