// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/ipc/runtime_folder.hpp"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace nuv::platform {

namespace {

RuntimeFolder failure(int error, const std::string& path, const char* reason) {
    return {FileDescriptor(), -error, path + ": " + reason};
}

RuntimeFolder open_folder(const std::string& path) {
    const bool made = ::mkdir(path.c_str(), 0700) == 0;
    if (!made && errno != EEXIST) {
        return failure(errno, path, std::strerror(errno));
    }
    FileDescriptor fd(::open(path.c_str(), O_DIRECTORY | O_NOFOLLOW | O_RDONLY | O_CLOEXEC));
    if (!fd) {
        return failure(errno, path, std::strerror(errno));
    }
    struct stat status {};
    if (::fstat(fd.get(), &status) != 0) {
        return failure(errno, path, std::strerror(errno));
    }
    if (status.st_uid != 0 && status.st_uid != ::geteuid()) {
        return failure(EACCES, path, "the folder belongs to somebody else");
    }
    // After mkdir(): that one obeys the umask.
    if (made && ::fchmod(fd.get(), RUNTIME_FOLDER_MODE) != 0) {
        return failure(errno, path, std::strerror(errno));
    }
    return {std::move(fd), 0, path};
}

/// A path through the descriptor, since that of a socket is limited to 107 characters.
bool socket_address(sockaddr_un& address, int folder, const std::string& name) {
    address = {};
    address.sun_family = AF_UNIX;
    const int length = std::snprintf(address.sun_path, sizeof address.sun_path,
                                     "/proc/self/fd/%d/%s", folder, name.c_str());
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return false;
    }
    return true;
}

FileDescriptor unix_socket(int type) {
    return FileDescriptor(::socket(AF_UNIX, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace

RuntimeFolder open_runtime_folder() noexcept {
    try {
        if (const char* const set = std::getenv("NUV_RUNTIME_DIR")) {
            return open_folder(set);
        }
        if (::geteuid() == 0 || ::access("/run/nuv", X_OK) == 0) {
            return open_folder("/run/nuv");
        }
        if (const char* const user = std::getenv("XDG_RUNTIME_DIR")) {
            return open_folder(std::string(user) + "/nuv");
        }
        return failure(
            ENOENT, "/run/nuv",
            "may not be entered, and neither NUV_RUNTIME_DIR nor XDG_RUNTIME_DIR is set");
    } catch (const std::bad_alloc&) {
        return {FileDescriptor(), -ENOMEM, {}};
    }
}

FileDescriptor listen_in(int folder, const std::string& name, int type) noexcept {
    try {
        const std::string temporary = name + ".new";
        sockaddr_un address{};
        FileDescriptor fd = unix_socket(type);
        if (!fd || !socket_address(address, folder, temporary)) {
            return {};
        }
        ::unlinkat(folder, temporary.c_str(), 0);
        if (::bind(fd.get(), generic(address), sizeof address) != 0) {
            return {};
        }
        // bind() obeys the umask.
        if (::fchmodat(folder, temporary.c_str(), SOCKET_MODE, 0) == 0 &&
            ::listen(fd.get(), SOMAXCONN) == 0 &&
            ::renameat(folder, temporary.c_str(), folder, name.c_str()) == 0) {
            return fd;
        }
        const int error = errno;
        ::unlinkat(folder, temporary.c_str(), 0);
        errno = error;
        return {};
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        return {};
    }
}

FileDescriptor connect_in(int folder, const std::string& name, int type) noexcept {
    sockaddr_un address{};
    FileDescriptor fd = unix_socket(type);
    if (!fd || !socket_address(address, folder, name) ||
        ::connect(fd.get(), generic(address), sizeof address) != 0) {
        return {};
    }
    return fd;
}

bool peer_may_talk(int folder, int socket) noexcept {
    ucred peer{};
    socklen_t size = sizeof peer;
    struct stat status {};
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0 ||
        ::fstat(folder, &status) != 0) {
        return false;
    }
    if (peer.uid == 0 || peer.uid == ::geteuid() || peer.gid == status.st_gid) {
        return true;
    }
    try {
        std::vector<gid_t> groups(64);
        for (;;) {
            socklen_t octets = static_cast<socklen_t>(groups.size() * sizeof(gid_t));
            if (::getsockopt(socket, SOL_SOCKET, SO_PEERGROUPS, groups.data(), &octets) == 0) {
                groups.resize(octets / sizeof(gid_t));
                return std::find(groups.begin(), groups.end(), status.st_gid) != groups.end();
            }
            if (errno != ERANGE || octets / sizeof(gid_t) <= groups.size()) {
                return false;
            }
            groups.resize(octets / sizeof(gid_t));
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace nuv::platform
