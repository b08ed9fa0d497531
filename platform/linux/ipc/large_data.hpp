// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/common/file_descriptor.hpp"

/// Data that is too large for a packet: a memory file that nobody can change any more.
namespace nuv::platform {

/// None on failure, and errno.
FileDescriptor make_large_data(const void* data, std::uint32_t size) noexcept;

/// Such a file of another process, as memory of one's own: what is written to it stays here.
class LargeData {
public:
    LargeData() noexcept = default;
    ~LargeData();
    LargeData(const LargeData&) = delete;
    LargeData& operator=(const LargeData&) = delete;

    /// 0; -EBADMSG when it is not sealed, no memory file, or not of this size; or the negated errno.
    int map(int fd, std::uint32_t size) noexcept;
    void* get() const noexcept { return data_; }

private:
    void* data_ = nullptr;
    std::uint32_t size_ = 0;
};

}  // namespace nuv::platform
