// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_service.hpp"
#include "nuv_platform/nuvipc.h"

namespace nuv::platform {

class FakePlatform;

/// The messages and events of the test double: they reach the endpoints that exist, in later passes of
/// its event loop. A test plays the peer of the tested code with an endpoint of its own
/// (`nuvipc_create("peer")`).
///
/// A receiver that is not run fills up: from one sender it takes as much as the queue of a Unix socket
/// (278 messages of 64 octets, 93 of 1 KiB, 11 of 16 KiB, 4 of 64 KiB), and 32 MiB of larger ones.
///
/// Refusable: every function of nuvipc.h that returns a pointer or a result, other than `nuvipc_list`
/// and `daemonmng_get_nuvipc`.
class NUV_PLATFORM_EXPORT FakeIpc final : public FakeService {
public:
    FakeIpc(std::vector<std::string>& shared_journal, FakePlatform& node);
    ~FakeIpc();

    /// The names of the endpoints, in the order of their creation.
    std::vector<std::string> endpoints() const;

    /// Endpoints that nobody destroyed, in words.
    std::vector<std::string> leftovers() const;

    /// For the fake's C functions: the endpoint of the daemon manager, or null.
    nuvipc*& managers_endpoint() noexcept { return managers_endpoint_; }

private:
    FakePlatform& node_;
    nuvipc* managers_endpoint_ = nullptr;
};

}  // namespace nuv::platform
