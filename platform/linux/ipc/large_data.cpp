// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/ipc/large_data.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

#ifndef MFD_NOEXEC_SEAL
#define MFD_NOEXEC_SEAL 8U
#endif

namespace nuv::platform {

namespace {

constexpr int SEALS = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;

}  // namespace

FileDescriptor make_large_data(const void* data, std::uint32_t size) noexcept {
    constexpr unsigned FLAGS = MFD_CLOEXEC | MFD_ALLOW_SEALING;
    // vm.memfd_noexec may demand what older kernels refuse.
    FileDescriptor fd(::memfd_create("nuvipc", FLAGS | MFD_NOEXEC_SEAL));
    if (!fd && errno == EINVAL) {
        fd = FileDescriptor(::memfd_create("nuvipc", FLAGS));
    }
    // Written, not mapped: where memory runs out, that is an error and no signal.
    for (std::uint32_t done = 0; fd && done < size;) {
        const ssize_t written =
            ::write(fd.get(), static_cast<const char*>(data) + done, size - done);
        if (written > 0) {
            done += static_cast<std::uint32_t>(written);
        } else if (errno != EINTR) {
            return {};
        }
    }
    if (!fd || ::fcntl(fd.get(), F_ADD_SEALS, SEALS | F_SEAL_SEAL) != 0) {
        return {};
    }
    return fd;
}

LargeData::~LargeData() {
    if (data_ != nullptr) {
        ::munmap(data_, size_);
    }
}

int LargeData::map(int fd, std::uint32_t size) noexcept {
    struct stat status {};
    const int seals = ::fcntl(fd, F_GET_SEALS);
    if (seals < 0 || (seals & SEALS) != SEALS || ::fstat(fd, &status) != 0 ||
        !S_ISREG(status.st_mode) || status.st_size != static_cast<off_t>(size)) {
        return -EBADMSG;
    }
    void* const memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE, fd, 0);
    if (memory == MAP_FAILED) {
        return -errno;
    }
    data_ = memory;
    size_ = size;
    return 0;
}

}  // namespace nuv::platform
