// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>

namespace nuvctl {

/// While it lives, SIGINT and SIGTERM do not end the process but make a descriptor readable. A signal
/// that was ignored before stays ignored.
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    /// Readable from the first signal on; -1 if the system has no descriptor left.
    int descriptor() const { return descriptor_; }
    /// The number of the first signal, 0 before.
    int received();

private:
    /// Takes a signal that came, 0 if there is none.
    int next();

    sigset_t before_{};
    int descriptor_ = -1;
    int received_ = 0;
};

}  // namespace nuvctl
