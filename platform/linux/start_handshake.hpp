// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

/// What the process that was started and the daemon that it becomes have to say to each other.
namespace nuv::platform {

inline constexpr char DAEMON_IS_READY = 'r';
inline constexpr char DAEMON_FAILED = 'f';

inline constexpr std::chrono::milliseconds LONGEST_SILENCE = std::chrono::seconds(20);

/// Waits for the word of the daemon `child` at the other end of `socket`. Returns the exit status of
/// the process that waits. When there was none for `silence`, the daemon is killed.
inline int wait_for_daemon(int socket, pid_t child, std::chrono::milliseconds silence) noexcept {
    namespace chrono = std::chrono;
    const auto end = chrono::steady_clock::now() + silence;
    pollfd readable{.fd = socket, .events = POLLIN, .revents = 0};
    for (;;) {
        const auto left = chrono::ceil<chrono::milliseconds>(end - chrono::steady_clock::now());
        const int ready = ::poll(
            &readable, 1, static_cast<int>(std::max<chrono::milliseconds::rep>(left.count(), 0)));
        if (ready > 0) {
            char word = DAEMON_FAILED;
            return ::recv(socket, &word, 1, 0) == 1 && word == DAEMON_IS_READY ? 0 : 1;
        }
        if (ready == 0 || errno != EINTR) {
            ::kill(child, SIGKILL);
            ::poll(&readable, 1, 1000);  // what it owned is free when it has gone
            return 1;
        }
    }
}

}  // namespace nuv::platform
