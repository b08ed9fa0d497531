// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <optional>

#include "internal/byte_cursor.hpp"
#include "nuv/limited_istream.hpp"

namespace nuv::impl {

/// What follows an element's Length octet at most: what the octet can say.
constexpr std::uint32_t max_content = 255;

/// The body of an element that lies in a stream, taken from it in one operation. What is observed
/// of the stream is what a LimitedIStream of the body's length leaves behind.
class StreamBody {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): octets_ are read before they are used
    StreamBody(std::istream& is, std::uint8_t length) : cursor_(take(is, length)) {}

    ~StreamBody() {
        if (bounded_) {
            // Give back what was taken ahead; the bounded stream does the rest.
            const auto surplus = static_cast<std::streamoff>(taken_ - cursor_.consumed());
            bounded_->rdbuf()->pubseekoff(-surplus, std::ios_base::cur, std::ios_base::in);
        }
    }

    StreamBody(const StreamBody&) = delete;
    StreamBody& operator=(const StreamBody&) = delete;

    ByteCursor& cursor() { return cursor_; }

private:
    ByteCursor take(std::istream& is, std::uint8_t length) {
        std::streambuf& buffer = *is.rdbuf();
        const bool whole = buffer.in_avail() >= length;
        const bool seekable =
            std::streamoff{buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in)} != -1;
        std::istream* source = &is;
        if (!whole || !seekable) {
            source = &bounded_.emplace(is, length);
        }
        taken_ = read_available(*source, octets_.data(), length);
        return ByteCursor({octets_.data(), taken_}, length - taken_);
    }

    // What an element can hold at most; not initialized, only what was read is looked at.
    std::array<std::uint8_t, max_content> octets_;
    std::size_t taken_ = 0;
    std::optional<LimitedIStream> bounded_;
    ByteCursor cursor_;
};

/// The body of an element that lies in memory.
class MemoryBody {
public:
    MemoryBody(ByteCursor& source, std::uint8_t length)
        : source_(source), cursor_(source.enter(length)) {}
    ~MemoryBody() { source_.leave(cursor_); }
    MemoryBody(const MemoryBody&) = delete;
    MemoryBody& operator=(const MemoryBody&) = delete;

    ByteCursor& cursor() { return cursor_; }

private:
    ByteCursor& source_;
    ByteCursor cursor_;
};

inline StreamBody body_of(std::istream& is, std::uint8_t length) { return {is, length}; }
inline MemoryBody body_of(ByteCursor& source, std::uint8_t length) { return {source, length}; }

}  // namespace nuv::impl
