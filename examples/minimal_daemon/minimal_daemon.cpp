// SPDX-License-Identifier: Apache-2.0
#include "minimal_daemon.hpp"

#include <iostream>

int main() try {
    MinimalDaemon daemon;
    auto timeout = nuv::daemon::Mainloop::DEFAULT_RUN_TIMEOUT;
    while (!daemon.loop.finished()) {
        timeout = daemon.loop.run(timeout);
    }
} catch (const std::exception& e) {
    std::cerr << e.what() << '\n';
    return 1;
}
