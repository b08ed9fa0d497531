// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "file.hpp"

struct z_stream_s;

namespace nuvctl {

/// The content of a file, which may be compressed by gzip, as a stream for a library in C.
class Input {
public:
    /// Opens the file `name`; "-" is standard input. The content ends once the descriptor `stop`
    /// becomes readable; -1 is none. Throws FileError.
    Input(const std::string& name, int stop);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /// A stream that reads the content. At most one, and not beyond this object's life.
    File stream();

    /// Octets of the file, and how many of them were read; the size is negative where nobody knows
    /// it, as of a pipe.
    std::int64_t size() const { return size_; }
    std::int64_t position() const { return position_; }
    /// Why the stream failed, null if the reason is its errno value.
    const char* problem() const { return problem_; }

private:
    struct EndInflate {
        void operator()(z_stream_s* inflater) const noexcept;
    };

    std::ptrdiff_t read(std::uint8_t* octets, std::size_t size) noexcept;
    std::ptrdiff_t read_compressed(std::uint8_t* octets, std::size_t size) noexcept;
    std::ptrdiff_t fill() noexcept;
    std::ptrdiff_t fail(const char* problem) noexcept;
    bool begin() noexcept;

    File file_;
    int stop_;
    bool stopped_ = false;
    std::int64_t size_ = -1;
    std::int64_t position_ = 0;
    const char* problem_ = nullptr;

    // What was read of the file and not used.
    std::array<std::uint8_t, 16384> buffer_{};
    std::size_t first_ = 0;
    std::size_t last_ = 0;

    bool begun_ = false;
    std::unique_ptr<z_stream_s, EndInflate> inflater_;  // null if the file is not compressed
    bool between_members_ = false;                      // of a compressed file
};

}  // namespace nuvctl
