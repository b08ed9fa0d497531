// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <streambuf>

#include "nuv/export.hpp"

namespace nuv::impl {

/// A stream buffer that reads through to another one and ends at a limit. All positions are
/// absolute positions of the buffer below: position 0 is its beginning, not the beginning of the
/// range, and seeking back before the range is allowed. Input only; it has no putback area.
class NUV_EXPORT LimitedInputStreambuf : public std::streambuf {
public:
    /// The position that no buffer has.
    static const pos_type INVALID_POS;

    /// Starts at the position of `underlying` (never null, must outlive this) and ends `limit`
    /// characters behind it. Throws std::logic_error if that position cannot be had, as from a
    /// pipe.
    LimitedInputStreambuf(std::streambuf* underlying, std::int64_t limit);

    pos_type get_limit_position() const { return limit_; }
    bool is_pos_in_range() const { return get_number_of_chars_to_limit() > 0; }
    /// Never negative. Counts what may be read, not what is there: it stays above 0 when the buffer
    /// below ends before the limit.
    std::int64_t get_number_of_chars_to_limit() const;

    void swap(LimitedInputStreambuf& other);

protected:
    int_type underflow() override;
    int_type uflow() override;
    std::streamsize xsgetn(char* buffer, std::streamsize n) override;
    std::streamsize showmanyc() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                     std::ios_base::openmode mode) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override;

private:
    std::streambuf* underlying_;
    pos_type limit_ = INVALID_POS;
    pos_type current_ = INVALID_POS;
};

}  // namespace nuv::impl
