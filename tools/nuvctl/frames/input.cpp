// SPDX-License-Identifier: Apache-2.0
#include "frames/input.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <new>

namespace nuvctl {

void Input::EndInflate::operator()(z_stream_s* inflater) const noexcept {
    inflateEnd(inflater);
    delete inflater;  // NOLINT(cppcoreguidelines-owning-memory): this is its owner
}

// Nothing waits for the writer of a named pipe but fill(), which can be stopped.
Input::Input(const std::string& name, int stop)
    : file_(open_to_read(name, O_NONBLOCK)), stop_(stop) {
    struct stat status {};
    if (fstat(fileno(file_.get()), &status) == 0 && S_ISREG(status.st_mode)) {
        size_ = status.st_size;
    }
}

File Input::stream() {
    cookie_io_functions_t functions{};
    functions.read = [](void* input, char* octets, std::size_t size) noexcept -> ssize_t {
        return static_cast<Input*>(input)->read(reinterpret_cast<std::uint8_t*>(octets), size);
    };
    File stream(fopencookie(this, "r", functions));
    if (stream == nullptr) {
        throw_errno(errno);
    }
    return stream;
}

std::ptrdiff_t Input::read(std::uint8_t* octets, std::size_t size) noexcept {
    if (!begun_ && !begin()) {
        return -1;
    }
    if (inflater_ != nullptr) {
        return read_compressed(octets, size);
    }
    if (first_ == last_) {
        const std::ptrdiff_t filled = fill();
        if (filled <= 0) {
            return filled;
        }
    }
    const std::size_t count = std::min(size, last_ - first_);
    std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(first_), count, octets);
    first_ += count;
    return static_cast<std::ptrdiff_t>(count);
}

/// Finds out whether the file is compressed. Returns false after an error.
bool Input::begin() noexcept {
    constexpr std::array<std::uint8_t, 2> gzip_magic{0x1F, 0x8B};
    while (last_ < gzip_magic.size()) {
        const std::ptrdiff_t filled = fill();
        if (filled < 0) {
            return false;
        }
        if (filled == 0) {
            break;
        }
    }
    begun_ = true;
    if (last_ < gzip_magic.size() ||
        !std::equal(gzip_magic.begin(), gzip_magic.end(), buffer_.begin())) {
        return true;
    }
    constexpr int gzip_only = 16;
    std::unique_ptr<z_stream> inflater(new (std::nothrow) z_stream{});
    if (inflater == nullptr || inflateInit2(inflater.get(), MAX_WBITS + gzip_only) != Z_OK) {
        errno = ENOMEM;
        return false;
    }
    inflater_.reset(inflater.release());
    return true;
}

std::ptrdiff_t Input::read_compressed(std::uint8_t* octets, std::size_t size) noexcept {
    inflater_->next_out = octets;
    inflater_->avail_out = static_cast<uInt>(size);
    while (true) {
        if (!between_members_) {
            inflater_->next_in = buffer_.data() + first_;
            inflater_->avail_in = static_cast<uInt>(last_ - first_);
            const int result = inflate(inflater_.get(), Z_NO_FLUSH);
            first_ = last_ - inflater_->avail_in;
            between_members_ = result == Z_STREAM_END;
            const std::size_t count = size - inflater_->avail_out;
            if (count > 0) {
                return static_cast<std::ptrdiff_t>(count);
            }
            if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
                return fail("the gzip data are damaged");
            }
        }
        if (first_ == last_) {
            const std::ptrdiff_t filled = fill();
            if (filled == 0 && !between_members_ && !stopped_) {
                return fail("the gzip data end too early");
            }
            if (filled <= 0) {
                return filled;
            }
        }
        if (between_members_) {
            inflateReset(inflater_.get());
            between_members_ = false;
        }
    }
}

/// Reads more of the file into the buffer, behind what is there. Returns the number of octets, 0 at the
/// end, -1 after an error.
std::ptrdiff_t Input::fill() noexcept {
    if (first_ == last_) {
        first_ = last_ = 0;
    }
    while (true) {
        std::array<pollfd, 2> descriptors{{{fileno(file_.get()), POLLIN, 0}, {stop_, POLLIN, 0}}};
        if (poll(descriptors.data(), descriptors.size(), -1) < 0) {
            if (errno != EINTR) {
                return -1;
            }
            continue;
        }
        if (descriptors[1].revents != 0) {
            stopped_ = true;
            return 0;
        }
        const ssize_t count =
            ::read(fileno(file_.get()), buffer_.data() + last_, buffer_.size() - last_);
        if (count >= 0) {
            last_ += static_cast<std::size_t>(count);
            position_ += count;
            return count;
        }
        if (errno != EAGAIN && errno != EINTR) {
            return -1;
        }
    }
}

std::ptrdiff_t Input::fail(const char* problem) noexcept {
    problem_ = problem;
    errno = EIO;
    return -1;
}

}  // namespace nuvctl
