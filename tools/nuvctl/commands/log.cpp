// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "commands/stop_signals.hpp"
#include "file.hpp"
#include "nuv_platform/clog_ring.h"

namespace nuvctl {

namespace {

/// A ring of log lines, mapped to read.
class Ring {
public:
    /// Throws FileError.
    explicit Ring(const std::string& name)
        : fd_(shm_open(path(name).c_str(), O_RDONLY | O_CLOEXEC, 0)) {
        if (fd_ < 0) {
            throw FileError(errno == ENOENT ? "there is no ring of this name"
                                            : std::strerror(errno));
        }
        struct stat status {};
        fstat(fd_, &status);
        size_ = static_cast<std::size_t>(status.st_size);
        if (size_ >= sizeof(clogger_ring)) {
            void* const memory = mmap(nullptr, size_, PROT_READ, MAP_SHARED, fd_, 0);
            ring_ = memory != MAP_FAILED ? static_cast<const clogger_ring*>(memory) : nullptr;
        }
        if (ring_ == nullptr ||
            std::memcmp(ring_->magic, CLOGGER_RING_MAGIC, sizeof ring_->magic) != 0 ||
            ring_->size == 0 || ring_->size > size_ - sizeof(clogger_ring)) {
            release();
            throw FileError("this is no ring of log lines");
        }
    }
    ~Ring() { release(); }
    Ring(const Ring&) = delete;
    Ring& operator=(const Ring&) = delete;

    /// Prints whole lines that were not printed yet.
    void print() {
        std::uint64_t end = load(ring_->written, __ATOMIC_ACQUIRE);
        const std::uint64_t oldest = end > ring_->size ? end - ring_->size : 0;
        std::uint64_t begin = std::max(printed_, oldest);
        std::string text(static_cast<std::size_t>(end - begin), '\0');
        const auto* const octets = reinterpret_cast<const char*>(ring_ + 1);
        for (std::size_t i = 0; i < text.size(); ++i) {
            text[i] = octets[(begin + i) % ring_->size];
        }
        std::atomic_thread_fence(std::memory_order_acquire);
        const std::uint64_t begun = load(ring_->begun, __ATOMIC_RELAXED);
        const std::uint64_t good = begun > ring_->size ? begun - ring_->size : 0;
        if (good > begin) {
            text.erase(
                0, static_cast<std::size_t>(std::min<std::uint64_t>(good - begin, text.size())));
            begin = std::min(good, end);
        }
        if (begin != printed_) {
            // The first line may lack its beginning.
            if (printed_ != 0) {
                report(std::to_string(begin - printed_) +
                       " octets were overwritten before they were read");
            }
            text.erase(0, std::min(text.find('\n'), text.size() - 1) + 1);
        }
        printed_ = end;
        std::cout << text << std::flush;
    }

    /// Whether the name stands for another ring by now, or for none.
    bool is_replaced() const {
        struct stat status {};
        return fstat(fd_, &status) == 0 && status.st_nlink == 0;
    }

private:
    static std::string path(const std::string& name) { return CLOGGER_RING_PREFIX + name; }
    static std::uint64_t load(const std::uint64_t& value, int order) {
        return __atomic_load_n(&value, order);
    }
    void release() {
        if (ring_ != nullptr) {
            munmap(const_cast<clogger_ring*>(ring_), size_);
        }
        close(fd_);
    }

    int fd_;
    std::size_t size_ = 0;
    const clogger_ring* ring_ = nullptr;
    std::uint64_t printed_ = 0;
};

}  // namespace

int run_log(const LogOptions& options) {
    constexpr int interval_ms = 100;
    constexpr int by_signal = 128;
    try {
        auto ring = std::make_unique<Ring>(options.ring);
        ring->print();
        if (!options.follow) {
            return 0;
        }
        StopSignals stop;
        while (stop.received() == 0) {
            pollfd wait{stop.descriptor(), POLLIN, 0};
            poll(&wait, 1, interval_ms);
            ring->print();
            if (!std::cout) {
                throw OutputError("-");
            }
            if (ring->is_replaced()) {
                try {
                    ring = std::make_unique<Ring>(options.ring);
                } catch (const FileError&) {  // not yet there
                }
            }
        }
        return by_signal + stop.received();
    } catch (const FileError& error) {
        report(options.ring + ": " + error.what());
        return 1;
    }
}

}  // namespace nuvctl
