// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/ipc/registry.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "platform/common/ipc_receiver.hpp"

// The C library has these for _GNU_SOURCE only in newer versions.
#ifndef F_OFD_GETLK
#define F_OFD_GETLK 36
#define F_OFD_SETLK 37
#endif

namespace nuv::platform {

namespace {

constexpr int OPEN_FLAGS = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
constexpr std::string_view EVENTS_SUFFIX = ".events";
constexpr const char* COUNTER_FILE = ".counter";
constexpr std::size_t COUNTER_SIZE = 4096;
// Others read what is in these files, only the owner writes.
constexpr mode_t READABLE_MODE = 0640;
constexpr mode_t COUNTER_MODE = 0660;

bool write_all(int fd, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t written = ::write(fd, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

/// A new file, with the mode that the umask would narrow.
FileDescriptor make_file(int folder, const char* name, mode_t mode) noexcept {
    FileDescriptor fd(::openat(folder, name, OPEN_FLAGS | O_RDWR | O_CREAT | O_EXCL, mode));
    if (fd && ::fchmod(fd.get(), mode) != 0) {
        fd.reset();
    }
    return fd;
}

/// Opens the file, or makes it. O_CREAT is not given for one that exists: in a sticky folder the
/// kernel may refuse that (fs.protected_regular).
FileDescriptor open_or_make(int folder, const char* name, mode_t mode) noexcept {
    for (;;) {
        FileDescriptor fd(::openat(folder, name, OPEN_FLAGS | O_RDWR));
        if (fd || errno != ENOENT) {
            return fd;
        }
        fd = make_file(folder, name, mode);
        if (fd || errno != EEXIST) {
            return fd;
        }
    }
}

struct flock whole_file(short type) noexcept {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

int negated_errno(bool good) noexcept { return good ? 0 : -errno; }

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

/// Calls `each` with the names of the files in the folder. Returns 0, or the negated errno.
template <typename Each>
int for_each_file(int folder, Each each) {
    FileDescriptor copy(::openat(folder, ".", O_DIRECTORY | O_RDONLY | O_CLOEXEC));
    if (!copy) {
        return -errno;
    }
    const std::unique_ptr<DIR, CloseFolder> open(::fdopendir(copy.get()));
    if (open == nullptr) {
        return -errno;
    }
    (void)copy.release();
    while (const dirent* const entry = ::readdir(open.get())) {
        each(std::string(entry->d_name));
    }
    return 0;
}

std::string read_file(int fd) {
    constexpr std::size_t LIMIT = 1 << 20;  // of a list; a file of somebody else may be any size
    std::string text;
    std::array<char, 4096> part{};
    while (text.size() < LIMIT) {
        const ssize_t count = ::read(fd, part.data(), part.size());
        if (count <= 0) {
            break;
        }
        text.append(part.data(), static_cast<std::size_t>(count));
    }
    return text;
}

bool is_regular(int fd) noexcept {
    struct stat status {};
    return ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
}

std::vector<std::string> event_names(std::string_view lines) {
    std::vector<std::string> names;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        if (line == ALL_EVENTS || is_event_name(line)) {
            names.emplace_back(line);
        }
    }
    return names;
}

}  // namespace

FileDescriptor lock_name(int folder, const std::string& name) noexcept {
    try {
        FileDescriptor fd = open_or_make(folder, (name + ".lock").c_str(), READABLE_MODE);
        if (!fd) {
            return {};
        }
        struct stat status {};
        if (::fstat(fd.get(), &status) != 0) {
            return {};
        }
        if (!S_ISREG(status.st_mode)) {
            errno = EEXIST;
            return {};
        }
        struct flock lock = whole_file(F_WRLCK);
        if (::fcntl(fd.get(), F_OFD_SETLK, &lock) != 0) {
            errno = errno == EAGAIN || errno == EACCES ? EADDRINUSE : errno;
            return {};
        }
        // A file of another user, opened by root: that user could go on writing pids into it.
        if (status.st_uid != ::geteuid() &&
            ::fchown(fd.get(), ::geteuid(), static_cast<gid_t>(-1)) != 0) {
            return {};
        }
        if (const int error = write_pid(fd.get())) {
            errno = -error;
            return {};
        }
        return fd;
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        return {};
    }
}

int write_pid(int lock) noexcept {
    // Always as long, so that a reader finds the old one or the new one.
    std::array<char, 16> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%10d\n", static_cast<int>(::getpid()));
    return negated_errno(::pwrite(lock, text.data(), static_cast<std::size_t>(length), 0) ==
                         length);
}

Owner owner_of(int folder, const std::string& name) noexcept {
    Owner owner;
    try {
        const FileDescriptor fd(::openat(folder, (name + ".lock").c_str(), OPEN_FLAGS | O_RDONLY));
        std::array<char, 16> text{};
        if (!fd || !is_regular(fd.get())) {
            return owner;
        }
        const ssize_t length = ::pread(fd.get(), text.data(), text.size(), 0);
        const char* const end = text.data() + std::max<ssize_t>(length, 0);
        const char* const digits =
            std::find_if(std::as_const(text).data(), end, [](char c) { return c != ' '; });
        std::from_chars(digits, end, owner.pid);
        // Asked, never taken: for a moment nobody could become the owner.
        struct flock lock = whole_file(F_RDLCK);
        owner.alive = ::fcntl(fd.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    } catch (const std::bad_alloc&) {  // unknown
    }
    return owner;
}

int write_event_list(int folder, const std::string& name,
                     const std::vector<std::string>& events) noexcept {
    try {
        const std::string file = name + std::string(EVENTS_SUFFIX);
        const std::string temporary = file + ".new";
        if (events.empty()) {
            return negated_errno(::unlinkat(folder, file.c_str(), 0) == 0 || errno == ENOENT);
        }
        std::string text;
        for (const std::string& event : events) {
            text += event + '\n';
        }
        ::unlinkat(folder, temporary.c_str(), 0);
        const FileDescriptor fd = make_file(folder, temporary.c_str(), READABLE_MODE);
        if (!fd) {
            return -errno;
        }
        const int result =
            negated_errno(write_all(fd.get(), text) &&
                          ::renameat(folder, temporary.c_str(), folder, file.c_str()) == 0);
        if (result != 0) {
            ::unlinkat(folder, temporary.c_str(), 0);
        }
        return result;
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

int read_event_lists(int folder, std::vector<EventList>& lists) noexcept {
    try {
        int result = 0;
        const int error = for_each_file(folder, [&](std::string file) {
            if (!file.ends_with(EVENTS_SUFFIX)) {
                return;
            }
            const FileDescriptor fd(::openat(folder, file.c_str(), OPEN_FLAGS | O_RDONLY));
            if (fd && is_regular(fd.get())) {
                file.resize(file.size() - EVENTS_SUFFIX.size());
                if (is_endpoint_name(file)) {
                    lists.push_back({std::move(file), event_names(read_file(fd.get()))});
                }
            } else if (!fd && (errno == EMFILE || errno == ENFILE || errno == ENOMEM)) {
                result = -errno;
            }
        });
        return error != 0 ? error : result;
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

std::vector<std::string> endpoint_names(int folder) {
    std::vector<std::string> names;
    for_each_file(folder, [&](std::string file) {
        struct stat status {};
        if (is_endpoint_name(file) &&
            ::fstatat(folder, file.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISSOCK(status.st_mode)) {
            names.push_back(std::move(file));
        }
    });
    std::sort(names.begin(), names.end());
    return names;
}

ChangeCounter::~ChangeCounter() {
    if (counter_ != nullptr) {
        ::munmap(counter_, COUNTER_SIZE);
    }
}

int ChangeCounter::open(int folder) noexcept {
    FileDescriptor fd(::openat(folder, COUNTER_FILE, OPEN_FLAGS | O_RDWR));
    if (!fd && errno == ENOENT) {
        // It gets its name once its page is there: touching one that the file system has no room for
        // ends the process.
        std::array<char, 32> temporary{};
        std::snprintf(temporary.data(), temporary.size(), "%s.%d", COUNTER_FILE,
                      static_cast<int>(::getpid()));
        ::unlinkat(folder, temporary.data(), 0);
        fd = make_file(folder, temporary.data(), COUNTER_MODE);
        const std::array<char, COUNTER_SIZE> page{};
        const bool made =
            fd && write_all(fd.get(), {page.data(), page.size()}) &&
            (::linkat(folder, temporary.data(), folder, COUNTER_FILE, 0) == 0 || errno == EEXIST);
        const int error = errno;
        ::unlinkat(folder, temporary.data(), 0);
        if (!made) {
            return -error;
        }
        fd = FileDescriptor(::openat(folder, COUNTER_FILE, OPEN_FLAGS | O_RDWR));
    }
    if (!fd) {
        return -errno;
    }
    struct stat status {};
    if (::fstat(fd.get(), &status) != 0) {
        return -errno;
    }
    if (!S_ISREG(status.st_mode) || status.st_size < static_cast<off_t>(COUNTER_SIZE)) {
        return -EBADF;
    }
    void* const memory =
        ::mmap(nullptr, COUNTER_SIZE, PROT_READ | PROT_WRITE, MAP_SHARED, fd.get(), 0);
    if (memory == MAP_FAILED) {
        return -errno;
    }
    counter_ = static_cast<std::uint32_t*>(memory);
    return 0;
}

void ChangeCounter::raise() noexcept { std::atomic_ref(*counter_).fetch_add(1); }

std::uint32_t ChangeCounter::value() const noexcept { return std::atomic_ref(*counter_).load(); }

}  // namespace nuv::platform
