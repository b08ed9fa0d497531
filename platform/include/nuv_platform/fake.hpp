// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake_log.hpp"

namespace nuv::platform {

/// The test double of the platform: one object behind the contract's C functions. A test constructs
/// it, tells it what to answer, and asks it what the library did. At most one lives at a time;
/// without one every call is answered as by a machine that has nothing. Single-threaded, but for
/// log records. When it dies it tells on stderr what the library left behind.
class NUV_PLATFORM_EXPORT FakePlatform {
public:
    FakePlatform();
    ~FakePlatform();
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    /// The living instance, or null.
    static FakePlatform* current() noexcept;

    /// The next `times` calls of the C function `function` do nothing and return `result`; one that
    /// returns a pointer returns NULL.
    void fail_next(const std::string& function, int result, unsigned times = 1);

    /// The calls that changed something, refused ones included, as they would be written in C:
    /// `clogger_add_file("default", "/tmp/log", 4096, NULL, 31, 0)`. Handles are shown by name,
    /// other pointers as `*`.
    const std::vector<std::string>& journal() const { return journal_; }

    FakeLog& log() { return log_; }

    /// Gives the interface `ifname` a hardware address.
    void set_hwaddr(const std::string& ifname, const std::array<std::uint8_t, 6>& address);
    const std::array<std::uint8_t, 6>* hwaddr(const std::string& ifname) const;

    /// For the fake's C functions: what the test wants `function` to answer, if anything.
    std::optional<int> take_failure(const std::string& function);
    void note(std::string call) { journal_.push_back(std::move(call)); }

private:
    struct Failure {
        int result;
        unsigned times;
    };

    std::map<std::string, Failure> failures_;
    std::vector<std::string> journal_;
    std::map<std::string, std::array<std::uint8_t, 6>> hwaddrs_;
    FakeLog log_;
};

}  // namespace nuv::platform
