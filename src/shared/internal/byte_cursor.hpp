// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <span>

#include "internal/masked_exceptions.hpp"
#include "nuv/binary_serializable_type.hpp"

namespace nuv::impl {

/// Reads values from a block of memory the way a std::istream over the same bytes does: the same
/// results, the same exceptions, the same state flags, at the price of a comparison and a load.
/// What reads elements is written against the operations that a cursor and a stream share.
///
/// A cursor over a bounded range may know that the range is longer than the bytes that are there
/// (`missing`), as a LimitedIStream over a stream that ends early is: `remaining` counts what the
/// range promises, a read beyond what is there fails.
class ByteCursor {
public:
    explicit ByteCursor(std::span<const std::uint8_t> bytes, std::size_t missing = 0)
        : begin_(bytes.data()),
          pos_(bytes.data()),
          end_(bytes.data() + bytes.size()),
          missing_(missing) {}

    // As a stream's.
    bool good() const { return state_ == std::ios_base::goodbit; }
    bool eof() const { return (state_ & std::ios_base::eofbit) != 0; }
    bool fail() const { return (state_ & std::ios_base::failbit) != 0; }
    bool bad() const { return false; }
    std::ios_base::iostate rdstate() const { return state_; }

    int peek() {
        if (!good()) {
            state_ |= std::ios_base::failbit;
        } else if (pos_ != end_) {
            return *pos_;
        } else {
            state_ |= std::ios_base::eofbit;
        }
        return -1;
    }

    /// The next octet without touching the state, -1 where there is none.
    int next() const { return good() && pos_ != end_ ? *pos_ : -1; }

    /// As seekg() from the current position.
    void skip(std::ptrdiff_t offset) {
        state_ &= ~std::ios_base::eofbit;
        if (fail()) {
            return;
        }
        if (offset < begin_ - pos_ || offset > end_ - pos_) {
            state_ |= std::ios_base::failbit;
        } else {
            pos_ += offset;
        }
    }

    /// Octets left up to the end of the range, those that are missing included.
    std::size_t remaining() const { return static_cast<std::size_t>(end_ - pos_) + missing_; }
    /// What is left and there.
    std::span<const std::uint8_t> rest() const { return {pos_, end_}; }
    /// Whether every octet of the range is there.
    bool whole() const { return missing_ == 0; }
    /// Octets read or passed over.
    std::size_t consumed() const { return static_cast<std::size_t>(pos_ - begin_); }

    template <class T>
    void read(T& value) {
        using Wire = WireForm<T>;
        const std::size_t count = take(Wire::size);
        Wire::decode(pos_ - count, count, value);
        if (count != Wire::size) {
            throw serialization::SerializationException(Wire::texts.deserialize);
        }
    }

    /// Passes over `count` octets, or over what is there, and returns them. The state is then that
    /// of a stream after a read of `count` octets.
    std::span<const std::uint8_t> read_octets(std::size_t count) {
        const std::size_t taken = take(count);
        return {pos_ - taken, taken};
    }

    /// The next `length` octets as a range of their own. `leave` goes with it.
    ByteCursor enter(std::size_t length) const {
        const std::size_t there = std::min(length, static_cast<std::size_t>(end_ - pos_));
        return ByteCursor({pos_, there}, length - there);
    }

    /// Goes to the end of `range`, read or not; where that lies beyond the bytes, fails and stays
    /// behind what was read. As ~LimitedIStream leaves its stream.
    void leave(const ByteCursor& range) {
        pos_ = range.missing_ == 0 ? range.end_ : range.pos_;
        if (range.missing_ != 0) {
            state_ |= std::ios_base::failbit;
        }
    }

private:
    std::size_t take(std::size_t count) {
        if (!good()) {
            state_ |= std::ios_base::failbit;
            return 0;
        }
        const auto there = static_cast<std::size_t>(end_ - pos_);
        if (count > there) {
            state_ |= std::ios_base::eofbit | std::ios_base::failbit;
            count = there;
        }
        pos_ += count;
        return count;
    }

    const std::uint8_t* begin_;
    const std::uint8_t* pos_;
    const std::uint8_t* end_;
    std::size_t missing_;
    std::ios_base::iostate state_ = std::ios_base::goodbit;
};

// One name for reading from either source.
template <class T>
void read_value(ByteCursor& source, [[maybe_unused]] serialization::SerializationContext& ctx,
                T& value) {
    if constexpr (std::derived_from<T, serialization::BinarySerializable>) {
        value.deserialize_from(source, ctx);
    } else {
        source.read(value);
    }
}
template <class T>
void read_value(std::istream& source, serialization::SerializationContext& ctx, T& value) {
    serialization::BinarySerializableType<T>::deserialize(source, ctx, value);
}

inline int peek(ByteCursor& source) { return source.peek(); }
inline int peek(std::istream& source) {
    const MaskedExceptions masked(source);
    return source.peek();
}

/// Moves by `offset` octets; sets the fail bit where there is no such position.
inline void skip(ByteCursor& source, std::ptrdiff_t offset) { source.skip(offset); }
inline void skip(std::istream& source, std::ptrdiff_t offset) {
    const MaskedExceptions masked(source);
    source.seekg(offset, std::ios_base::cur);
}

/// Fills `octets`; throws the octet's message when they run out.
inline void read_octets(ByteCursor& source, std::span<std::uint8_t> octets) {
    const auto taken = source.read_octets(octets.size());
    std::copy(taken.begin(), taken.end(), octets.begin());
    if (taken.size() != octets.size()) {
        throw serialization::SerializationException(octet_texts.deserialize);
    }
}
inline void read_octets(std::istream& source, std::span<std::uint8_t> octets) {
    read_available(source, octets.data(), octets.size());
    check_read(source, octet_texts.deserialize);
}

}  // namespace nuv::impl
