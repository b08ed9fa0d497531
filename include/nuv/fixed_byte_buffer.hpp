// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "nuv/export.hpp"

namespace nuv {

/// At most N bytes, kept in place; what is behind size() is always zero. Whatever makes it longer
/// than N throws std::invalid_argument "Argument too long" and leaves it as it was.
///
/// A full buffer has no NUL at its end: C calls get to_string(). Ordered by text, bytes unsigned,
/// then by length.
template <std::uint32_t N>
class FixedByteBuffer {
public:
    FixedByteBuffer() = default;
    explicit FixedByteBuffer(std::string_view text) { assign(text); }
    explicit FixedByteBuffer(std::span<const std::uint8_t> bytes) { assign(bytes); }

    /// The argument may be a part of the buffer.
    void assign(std::string_view text) {
        assign(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    }
    void assign(std::span<const std::uint8_t> bytes) {
        check_length(bytes.size());
        std::copy(bytes.begin(), bytes.end(), bytes_.begin());
        resize(static_cast<std::uint32_t>(bytes.size()));
    }
    void clear() noexcept { *this = {}; }
    /// Appends zero bytes or cuts the end off.
    void resize(std::uint32_t size) {
        check_length(size);
        std::fill(bytes_.begin() + size, bytes_.end(), std::uint8_t{0});
        size_ = size;
    }

    std::uint32_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    static constexpr std::uint32_t capacity() noexcept { return N; }

    /// Only the first size() bytes may be written to: resize() first.
    std::uint8_t* data() noexcept { return bytes_.data(); }
    const std::uint8_t* data() const noexcept { return bytes_.data(); }
    std::uint8_t* begin() noexcept { return data(); }
    const std::uint8_t* begin() const noexcept { return data(); }
    std::uint8_t* end() noexcept { return data() + size_; }
    const std::uint8_t* end() const noexcept { return data() + size_; }

    std::span<const std::uint8_t> span() const noexcept { return {data(), size_}; }
    std::string_view string_view() const noexcept {
        return {reinterpret_cast<const char*>(data()), size_};
    }
    std::string to_string() const { return std::string(string_view()); }

    bool operator==(const FixedByteBuffer&) const = default;
    std::strong_ordering operator<=>(const FixedByteBuffer& other) const noexcept {
        return string_view() <=> other.string_view();
    }
    /// The bytes as they are, nothing escaped.
    friend std::ostream& operator<<(std::ostream& os, const FixedByteBuffer& buffer) {
        return os << buffer.string_view();
    }

private:
    static void check_length(std::size_t size) {
        if (size > N) {
            throw std::invalid_argument("Argument too long");
        }
    }

    std::uint32_t size_ = 0;
    std::array<std::uint8_t, N> bytes_{};
};

}  // namespace nuv

template <std::uint32_t N>
struct std::hash<nuv::FixedByteBuffer<N>> {
    std::size_t operator()(const nuv::FixedByteBuffer<N>& buffer) const noexcept {
        return std::hash<std::string_view>()(buffer.string_view());
    }
};
