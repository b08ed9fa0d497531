// SPDX-License-Identifier: Apache-2.0
// Where the lines of the logger's outputs go. A line that cannot be written is dropped.
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <limits>
#include <string>
#include <system_error>

#include "platform/common/clog_core.hpp"
#include "platform/linux/clog_ring.hpp"

namespace nuv::platform::clog {

namespace {

/// Writes all of `text`. Returns 0, or the errno of the write that failed.
int write_all(int fd, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t count = ::write(fd, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

/// The same for a descriptor that may be a pipe or a socket. When its reader is gone, the kernel
/// sends SIGPIPE to this thread. The signal is blocked and consumed here, so that the process does
/// not notice it, whatever its disposition is. A SIGPIPE that was pending before stays pending.
void write_without_sigpipe(int fd, std::string_view text) noexcept {
    sigset_t pipe;
    sigset_t before;
    sigset_t pending;
    ::sigemptyset(&pipe);
    ::sigaddset(&pipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &pipe, &before);
    // A signal that was not blocked cannot have been pending.
    const bool was_pending = ::sigismember(&before, SIGPIPE) == 1 && ::sigpending(&pending) == 0 &&
                             ::sigismember(&pending, SIGPIPE) == 1;
    if (write_all(fd, text) == EPIPE && !was_pending) {
        const timespec no_wait{};
        ::sigtimedwait(&pipe, nullptr, &no_wait);
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

class DescriptorSink final : public Sink {
public:
    explicit DescriptorSink(int fd) : fd_(fd) {}

    void write(const clogger_msg_info& /*info*/, std::string_view line) override {
        write_without_sigpipe(fd_, line);
    }

private:
    const int fd_;  // not ours to close
};

class SyslogSink final : public Sink {
public:
    SyslogSink() { ::openlog(nullptr, LOG_PID, LOG_DAEMON); }
    ~SyslogSink() override { ::closelog(); }

    void write(const clogger_msg_info& info, std::string_view line) override {
        constexpr std::array PRIORITIES = {LOG_ERR, LOG_WARNING, LOG_INFO, LOG_DEBUG, LOG_DEBUG};
        ::syslog(PRIORITIES[static_cast<std::size_t>(info.level)], "%s", line.data());
    }
};

class FileSink final : public Sink {
public:
    explicit FileSink(const Request& request)
        : path_(request.name),
          limit_(request.size != 0 ? request.size : std::numeric_limits<std::int64_t>::max()),
          backups_(request.style != nullptr ? request.style->files : 1) {
        open();
        if (request.style != nullptr && request.style->rotate_on_open != 0 && size_ > 0) {
            rotate();
        }
    }
    ~FileSink() override { close(); }

    void write(const clogger_msg_info& /*info*/, std::string_view line) override {
        if (fd_ < 0) {  // the last rotation could not open it
            open();
        }
        const auto length = static_cast<std::int64_t>(line.size());
        if (size_ > limit_ - length) {
            inspect();  // somebody else may have written to it or emptied it
            if (size_ > 0 && size_ > limit_ - length) {
                rotate();
            }
        }
        size_ += length;
        if (is_pipe_) {
            write_without_sigpipe(fd_, line);
        } else {
            write_all(fd_, line);
        }
    }

private:
    /// Throws std::system_error.
    void open(int flags = 0) {
        fd_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | flags, 0644);
        if (fd_ < 0) {
            throw std::system_error(errno, std::system_category());
        }
        inspect();
    }

    void close() noexcept {
        if (fd_ >= 0) {
            ::close(fd_);
            fd_ = -1;
        }
    }

    void inspect() noexcept {
        struct stat status {};
        ::fstat(fd_, &status);
        size_ = status.st_size;
        is_pipe_ = S_ISFIFO(status.st_mode);
    }

    /// Also empties a file that cannot be renamed, so that it does not grow beyond its limit.
    void rotate() {
        close();
        for (unsigned index = backups_; index > 0; --index) {
            std::rename(path(index - 1).c_str(), path(index).c_str());
        }
        open(O_TRUNC);
    }

    /// log.txt, log.1.txt, log.2.txt; without an extension log, log.1, log.2.
    std::string path(unsigned index) const {
        if (index == 0) {
            return path_;
        }
        const auto name = path_.rfind('/') + 1;  // 0 without a slash
        const auto dot = path_.rfind('.');
        const bool has_extension =
            dot != std::string::npos && dot > name && dot + 1 != path_.size();
        return std::string(path_).insert(has_extension ? dot : path_.size(),
                                         '.' + std::to_string(index));
    }

    const std::string path_;
    const std::int64_t limit_;
    const unsigned backups_;
    int fd_ = -1;
    std::int64_t size_ = 0;
    bool is_pipe_ = false;
};

}  // namespace

std::unique_ptr<Sink> open_sink(const Request& request) {
    switch (request.kind) {
        case Kind::STANDARD_ERROR:
            return std::make_unique<DescriptorSink>(STDERR_FILENO);
        case Kind::STANDARD_OUTPUT:
            return std::make_unique<DescriptorSink>(STDOUT_FILENO);
        case Kind::SYSTEM_LOG:
            return std::make_unique<SyslogSink>();
        case Kind::RING:
            return std::make_unique<RingSink>(request.name, request.size);
        default:
            return std::make_unique<FileSink>(request);
    }
}

}  // namespace nuv::platform::clog
