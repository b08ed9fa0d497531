// SPDX-License-Identifier: Apache-2.0
#include "nuv/limited_input_streambuf.hpp"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace nuv::impl {

const LimitedInputStreambuf::pos_type LimitedInputStreambuf::INVALID_POS{off_type{-1}};

LimitedInputStreambuf::LimitedInputStreambuf(std::streambuf* underlying, std::int64_t limit)
    : underlying_(underlying),
      current_(underlying->pubseekoff(0, std::ios_base::cur, std::ios_base::in)) {
    if (current_ == INVALID_POS) {
        throw std::logic_error(
            "Failed to fetch the current read position of the underlying streambuf");
    }
    off_type end = 0;
    limit_ = __builtin_add_overflow(off_type{current_}, off_type{limit}, &end)
                 ? std::numeric_limits<off_type>::max()
                 : end;
}

std::int64_t LimitedInputStreambuf::get_number_of_chars_to_limit() const {
    return std::max<std::int64_t>(off_type{limit_} - off_type{current_}, 0);
}

void LimitedInputStreambuf::swap(LimitedInputStreambuf& other) {
    std::streambuf::swap(other);
    std::swap(underlying_, other.underlying_);
    std::swap(current_, other.current_);
    std::swap(limit_, other.limit_);
}

LimitedInputStreambuf::int_type LimitedInputStreambuf::underflow() {
    return is_pos_in_range() ? underlying_->sgetc() : traits_type::eof();
}

LimitedInputStreambuf::int_type LimitedInputStreambuf::uflow() {
    if (!is_pos_in_range()) {
        return traits_type::eof();
    }
    const int_type c = underlying_->sbumpc();
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        current_ += 1;
    }
    return c;
}

std::streamsize LimitedInputStreambuf::xsgetn(char* buffer, std::streamsize n) {
    if (!is_pos_in_range()) {
        return 0;
    }
    const std::streamsize count = underlying_->sgetn(
        buffer,
        static_cast<std::streamsize>(std::min<std::int64_t>(n, get_number_of_chars_to_limit())));
    current_ += count;
    return count;
}

std::streamsize LimitedInputStreambuf::showmanyc() {
    if (!is_pos_in_range()) {
        return -1;
    }
    const std::streamsize available = underlying_->in_avail();
    return static_cast<std::streamsize>(
        std::min<std::int64_t>(available, get_number_of_chars_to_limit()));
}

LimitedInputStreambuf::pos_type LimitedInputStreambuf::seekoff(off_type offset,
                                                               std::ios_base::seekdir direction,
                                                               std::ios_base::openmode mode) {
    if ((mode & std::ios_base::in) == 0) {
        return INVALID_POS;
    }
    off_type base = 0;
    if (direction == std::ios_base::cur) {
        base = current_;
    } else if (direction == std::ios_base::end) {
        base = limit_;
    } else if (direction != std::ios_base::beg) {
        return INVALID_POS;
    }
    off_type target = 0;
    if (__builtin_add_overflow(base, offset, &target) || target < 0 || target > off_type{limit_}) {
        return INVALID_POS;
    }
    const pos_type reached = underlying_->pubseekpos(target, std::ios_base::in);
    if (reached != INVALID_POS) {
        current_ = reached;
    }
    return reached;
}

LimitedInputStreambuf::pos_type LimitedInputStreambuf::seekpos(pos_type position,
                                                               std::ios_base::openmode mode) {
    return seekoff(off_type{position}, std::ios_base::beg, mode);
}

}  // namespace nuv::impl
