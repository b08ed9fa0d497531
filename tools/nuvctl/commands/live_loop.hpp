// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "commands/stop_signals.hpp"
#include "nuv_platform/nuvipc.h"

namespace nuvctl {

/// What is wrong when a call about `endpoint` returned `result`, with what to do about it.
std::string problem_with(const std::string& endpoint, int result);

/// The tool among the daemons: the event loop, and an endpoint of its own, the first free of "nuvctl.1",
/// "nuvctl.2" and so on. Throws std::runtime_error.
class LiveLoop {
public:
    LiveLoop();
    ~LiveLoop();
    LiveLoop(const LiveLoop&) = delete;
    LiveLoop& operator=(const LiveLoop&) = delete;

    nuvipc* ipc() const { return ipc_.get(); }

    /// Runs until SIGINT or SIGTERM. The exit status: 128 and the signal's number.
    int run_until_stopped();

private:
    struct Destroy {
        void operator()(nuvipc* ipc) const { nuvipc_destroy(ipc); }
    };

    std::unique_ptr<nuvipc, Destroy> ipc_;
};

}  // namespace nuvctl
