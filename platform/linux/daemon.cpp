// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/daemon.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "nuv_platform/clog.h"
#include "platform/common/file_descriptor.hpp"
#include "platform/linux/fork.hpp"
#include "platform/linux/start_handshake.hpp"
#include "platform/linux/supervisor.hpp"

namespace nuv::platform {

namespace {

// To the process that waits for this one, until it has its answer.
UnsharedDescriptor& starter() noexcept {
    static UnsharedDescriptor socket;
    return socket;
}

/// The standard streams may have been closed; their numbers are not for others.
FileDescriptor above_streams(FileDescriptor fd) noexcept {
    if (fd && fd.get() <= STDERR_FILENO) {
        return FileDescriptor(::fcntl(fd.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    return fd;
}

void answer(char word) noexcept {
    ::send(starter().get(), &word, 1, MSG_NOSIGNAL);
    starter().reset();
}

int start(bool keep_folder, bool keep_streams) {
    if (Supervisor::present()) {
        return 0;
    }
    if (starter()) {
        return -EALREADY;
    }
    const FileDescriptor null =
        above_streams(FileDescriptor(::open("/dev/null", O_RDWR | O_CLOEXEC)));
    std::array<int, 2> ends{-1, -1};
    if (!null || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return -errno;
    }
    const FileDescriptor ours = above_streams(FileDescriptor(ends[0]));
    UnsharedDescriptor theirs(above_streams(FileDescriptor(ends[1])));
    if (!ours || !theirs) {
        return -errno;
    }

    const KeepAcrossFork keep;
    const pid_t child = ::fork();
    if (child < 0) {
        return -errno;
    }
    if (child > 0) {
        detach_after_fork();
        theirs.reset();
        // No destructors: everything belongs to the child.
        ::_exit(wait_for_daemon(ours.get(), child, LONGEST_SILENCE));
    }
    take_over_after_fork();
    starter() = std::move(theirs);
    ::setsid();
    [[maybe_unused]] const int entered = keep_folder ? 0 : ::chdir("/");
    for (int stream = 0; !keep_streams && stream <= STDERR_FILENO; ++stream) {
        ::dup2(null.get(), stream);
    }
    return 0;
}

}  // namespace

}  // namespace nuv::platform

extern "C" {

int daemon_start(int a, int b) {
    try {
        return nuv::platform::start(a != 0, b != 0);
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

void daemon_ready(void) {
    if (nuv::platform::starter()) {
        nuv::platform::answer(nuv::platform::DAEMON_IS_READY);
        return;
    }
    if (!nuv::platform::Supervisor::present()) {
        return;
    }
    nuv::platform::Supervisor supervisor;
    int result = supervisor.open();
    if (result == 0) {
        result = supervisor.notify("READY=1");
    }
    if (result != 0) {
        clogmod__err(clogmod_get_or_alloc("daemon"), "platform/linux/daemon", __func__, __LINE__,
                     "the supervisor does not learn that this is ready: %s",
                     std::strerror(-result));
    }
}

void daemon_start_failed(void) {
    if (nuv::platform::starter()) {
        nuv::platform::answer(nuv::platform::DAEMON_FAILED);
    }
}

}  // extern "C"
