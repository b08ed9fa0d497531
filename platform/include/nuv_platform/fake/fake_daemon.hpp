// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

/// The start-up handshake of the test double, and its allocator: daemon_start() forks nothing and
/// succeeds. The journal shows what was reported. Refusable: `daemon_start`.
class NUV_PLATFORM_EXPORT FakeDaemon final : public FakeService {
public:
    explicit FakeDaemon(std::vector<std::string>& shared_journal);
};

}  // namespace nuv::platform
