// SPDX-License-Identifier: Apache-2.0
#include "minimal_daemon.hpp"

int main() {
    MinimalDaemon daemon;
    auto timeout = nuv::daemon::Mainloop::DEFAULT_RUN_TIMEOUT;
    while (!daemon.loop.finished()) {
        timeout = daemon.loop.run(timeout);
    }
}
