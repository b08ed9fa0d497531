// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/clog_ring.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "platform/linux/fork.hpp"

namespace nuv::platform::clog {

namespace {

void check(bool good, int error = 0) {
    if (!good) {
        throw std::system_error(error != 0 ? error : errno, std::system_category());
    }
}

}  // namespace

RingSink::RingSink(const std::string& name, std::uint32_t size)
    : object_(CLOGGER_RING_PREFIX + name),
      owner_(::getpid()),
      size_(size),
      fd_(::shm_open(object_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
    check(fd_ >= 0);
    try {
        map();
    } catch (...) {
        ::close(fd_);
        throw;
    }
}

RingSink::~RingSink() {
    ::munmap(ring_, sizeof *ring_ + size_);
    if (::getpid() == owner_) {
        ::shm_unlink(object_.c_str());
    }
    ::close(fd_);
}

bool RingSink::inherited() const { return KeepAcrossFork::active(); }

void RingSink::own(bool own) { owner_ = own ? ::getpid() : 0; }

void RingSink::map() {
    check(::flock(fd_, LOCK_EX | LOCK_NB) == 0, EBUSY);
    struct stat status {};
    check(::fstat(fd_, &status) == 0);
    check(status.st_nlink != 0, EBUSY);           // removed by its owner at this moment
    check(status.st_uid == ::geteuid(), EACCES);  // another user's, waiting for our records

    const std::size_t total = sizeof *ring_ + size_;
    if (status.st_size != static_cast<off_t>(total)) {
        check(::ftruncate(fd_, 0) == 0);
        // Memory that is only promised would end the process when it is written to.
        if (const int error = ::posix_fallocate(fd_, 0, static_cast<off_t>(total))) {
            ::shm_unlink(object_.c_str());
            check(false, error);
        }
    }
    void* const memory = ::mmap(nullptr, total, PROT_READ | PROT_WRITE, MAP_SHARED, fd_, 0);
    check(memory != MAP_FAILED);
    ring_ = static_cast<clogger_ring*>(memory);
    if (std::memcmp(ring_->magic, CLOGGER_RING_MAGIC, sizeof ring_->magic) != 0 ||
        ring_->size != size_) {
        *ring_ = {.magic = {}, .size = size_, .reserved = 0, .begun = 0, .written = 0};
        std::memcpy(ring_->magic, CLOGGER_RING_MAGIC, sizeof ring_->magic);
    }
    ring_->written = ring_->begun;
}

void RingSink::write(const clogger_msg_info& /*info*/, std::string_view line) {
    if (::getpid() != owner_) {  // a child that was made without its fork handlers
        return;
    }
    line = line.substr(0, size_);
    const std::uint64_t begin = ring_->written;
    const std::uint64_t end = begin + line.size();
    std::atomic_ref(ring_->begun).store(end, std::memory_order_relaxed);
    __sync_synchronize();  // not an atomic_thread_fence: ThreadSanitizer refuses those

    const auto offset = static_cast<std::size_t>(begin % size_);
    const std::size_t first = std::min(line.size(), size_ - offset);
    std::memcpy(text() + offset, line.data(), first);
    std::memcpy(text(), line.data() + first, line.size() - first);
    text()[(end - 1) % size_] = '\n';  // also where a line longer than the ring was cut

    std::atomic_ref(ring_->written).store(end, std::memory_order_release);
}

}  // namespace nuv::platform::clog
