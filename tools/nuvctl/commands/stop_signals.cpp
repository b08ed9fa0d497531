// SPDX-License-Identifier: Apache-2.0
#include "commands/stop_signals.hpp"

#include <sys/signalfd.h>
#include <unistd.h>

#include <initializer_list>

namespace nuvctl {

StopSignals::StopSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM}) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) {
            sigaddset(&signals, signal);
        }
    }
    descriptor_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) {
        sigemptyset(&signals);
    }
    sigprocmask(SIG_BLOCK, &signals, &before_);
}

StopSignals::~StopSignals() {
    // Whoever stops a process group may send the same signal once more.
    while (received_ != 0 && next() != 0) {
    }
    sigprocmask(SIG_SETMASK, &before_, nullptr);
    close(descriptor_);
}

int StopSignals::received() {
    if (received_ == 0) {
        received_ = next();
    }
    return received_;
}

int StopSignals::next() {
    signalfd_siginfo signal{};
    return read(descriptor_, &signal, sizeof(signal)) == sizeof(signal)
               ? static_cast<int>(signal.ssi_signo)
               : 0;
}

}  // namespace nuvctl
