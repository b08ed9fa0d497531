// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <sstream>

#include "nuv/export.hpp"

namespace nuv {

/// A read-only stream buffer over a block of memory, which is not copied and must outlive it.
///
///     MemBuf buffer(bytes);
///     std::istream is(&buffer);
class NUV_EXPORT MemBuf : public std::stringbuf {
public:
    explicit MemBuf(std::span<const std::uint8_t> bytes);

    // The string buffer's own move and swap would set the get area to their own, empty string.
    MemBuf(const MemBuf&) = delete;
    MemBuf& operator=(const MemBuf&) = delete;
    void swap(MemBuf& other) = delete;
    friend void swap(MemBuf& a, MemBuf& b) = delete;
};

}  // namespace nuv
