// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What a fork() does to the platform. A child loses everything: its copies of the descriptors of the
/// loop and of the endpoints are closed, and all calls answer -ECHILD there. Only the child that becomes
/// the daemon keeps what the process had; the process that it came from then waits and _exit()s.
namespace nuv::platform {

/// While one of these lives, the child of a fork() keeps everything.
class KeepAcrossFork {
public:
    KeepAcrossFork();
    ~KeepAcrossFork();
    KeepAcrossFork(const KeepAcrossFork&) = delete;
    KeepAcrossFork& operator=(const KeepAcrossFork&) = delete;
};

/// In the child that keeps everything, before anything else: it becomes the owner. Its sockets listen
/// again (peers are shown the process that called listen() last), the lock files name it, and the log
/// rings take its lines.
void take_over_after_fork();

/// In the parent of such a child, before it logs anything: it leaves the log rings to the child.
void detach_after_fork();

}  // namespace nuv::platform
