// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_loop.hpp"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

class CommandServer;

/// The debug commands of the test double: the same server as on Linux, behind socket pairs.
/// Refusable: `aicmd_listen_start`, `aicmd_register_library`, `aicmd_unregister_library`,
/// `aicmd_module_set_ctx` and `aicmd_connect`.
class NUV_PLATFORM_EXPORT FakeCommands final : public FakeService {
public:
    FakeCommands(std::vector<std::string>& shared_journal, FakeLoop& loop);
    ~FakeCommands();

    /// Sends a command line to the listener of `endpoint` and runs passes of the event loop until the
    /// answer is there; the clock does not move. Returns the answer, with its last line ("OK\n", or
    /// "ERROR ...\n"). Throws std::runtime_error when there is no such listener or no answer comes.
    std::string run(const std::string& endpoint, const std::string& line);

    /// Libraries that nobody unregistered, in words.
    std::vector<std::string> leftovers() const;

    /// For the fake's C functions.
    CommandServer& server() noexcept { return *server_; }

private:
    FakeLoop& loop_;
    std::unique_ptr<CommandServer> server_;
};

}  // namespace nuv::platform
