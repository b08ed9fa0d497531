// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/common/file_descriptor.hpp"

/// The folder where the endpoints of a machine meet, the sockets in it, and who may talk to whom:
/// the same user, root, and the members of the folder's group. File modes keep others out, and the
/// kernel's word on the peer is asked besides.
namespace nuv::platform {

/// Permissions of the folder: for its group, sticky so that nobody renames a file over another's.
inline constexpr unsigned RUNTIME_FOLDER_MODE = 03770;
inline constexpr unsigned SOCKET_MODE = 0660;

/// NUV_RUNTIME_DIR when it is set; else /run/nuv for root and whoever may enter it; else nuv in
/// XDG_RUNTIME_DIR. Made when it is missing. It belongs to root or the caller, and is no link.
/// Without one the result holds the negated errno and, for the log, which folder and why.
struct RuntimeFolder {
    FileDescriptor fd;
    int error = 0;
    std::string reason;
};
RuntimeFolder open_runtime_folder() noexcept;

/// A non-blocking listening socket `name` in the folder, of `type` SOCK_SEQPACKET or SOCK_STREAM. It
/// gets its name when it listens, replacing what had it. On failure none, and errno.
FileDescriptor listen_in(int folder, const std::string& name, int type) noexcept;

/// A socket connected to `name`, close-on-exec, non-blocking also while it connects. On failure none,
/// and errno: ENOENT no such socket, ECONNREFUSED nobody listens, EAGAIN the backlog is full.
FileDescriptor connect_in(int folder, const std::string& name, int type) noexcept;

/// Whether the process that made the other end of the socket may talk to this one.
bool peer_may_talk(int folder, int socket) noexcept;

}  // namespace nuv::platform
