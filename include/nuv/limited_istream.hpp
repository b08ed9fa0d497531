// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <istream>

#include "nuv/export.hpp"
#include "nuv/limited_input_streambuf.hpp"

namespace nuv {

/// Reads `limit` characters of a stream and no more; on destruction moves the stream to the end of
/// that range, read or not.
///
///     LimitedIStream body(is, length);       // is stands at the first character of the body
///     read_what_is_known(body);              // cannot run past the body
///     // ~LimitedIStream: is stands right behind the body
///
/// Positions (`tellg`, `seekg`) are those of the stream below, not of the range. The state flags of
/// the stream below are untouched while reading; the destructor's seek sets its fail bit if the
/// stream ends before the range does and cannot be positioned past its end, and does nothing on a
/// stream that has failed before. A negative limit reads nothing and moves the stream backwards.
///
/// The stream below must outlive this object and must not be read meanwhile.
class NUV_EXPORT LimitedIStream : public std::istream {
public:
    /// Throws std::logic_error if `is` has no stream buffer or no position to ask for.
    LimitedIStream(std::istream& is, std::int64_t limit);
    /// Never throws: a seek that raises std::ios_base::failure is logged.
    ~LimitedIStream() override;
    LimitedIStream(const LimitedIStream&) = delete;
    LimitedIStream& operator=(const LimitedIStream&) = delete;

    /// See impl::LimitedInputStreambuf: never negative, and above 0 for ever when the stream below
    /// ends early. A loop over it must check that each read succeeds.
    std::int64_t get_number_of_chars_to_limit() const {
        return buffer_.get_number_of_chars_to_limit();
    }

private:
    std::istream& underlying_;
    impl::LimitedInputStreambuf buffer_;
};

}  // namespace nuv
