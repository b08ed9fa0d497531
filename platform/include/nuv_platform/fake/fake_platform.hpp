// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_clock.hpp"
#include "nuv_platform/fake/fake_commands.hpp"
#include "nuv_platform/fake/fake_daemon.hpp"
#include "nuv_platform/fake/fake_environment.hpp"
#include "nuv_platform/fake/fake_interfaces.hpp"
#include "nuv_platform/fake/fake_ipc.hpp"
#include "nuv_platform/fake/fake_log.hpp"
#include "nuv_platform/fake/fake_loop.hpp"
#include "nuv_platform/fake/fake_watchdog.hpp"

namespace nuv::platform {

/// The test double of the platform: one object behind the contract's C functions, with one member
/// per service. A test constructs it, sets up what its services answer, and reads what the library
/// did. At most one exists at a time; without one every call is answered as by a machine that has
/// nothing but a clock. Single-threaded, except for log records and the clock. Its destructor
/// reports on stderr what the library left behind.
class NUV_PLATFORM_EXPORT FakePlatform {
public:
    FakePlatform();
    ~FakePlatform();
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    /// The living instance, or null.
    static FakePlatform* current() noexcept;

    FakeLog& log() { return log_; }
    FakeInterfaces& interfaces() { return interfaces_; }
    FakeClock& clock() { return clock_; }
    FakeLoop& loop() { return loop_; }
    FakeCommands& commands() { return commands_; }
    FakeIpc& ipc() { return ipc_; }
    FakeDaemon& daemon() { return daemon_; }
    FakeWatchdog& watchdog() { return watchdog_; }
    FakeEnvironment& environment() { return environment_; }

    /// The journals of all services as one, in the order of the calls.
    const std::vector<std::string>& journal() const { return journal_; }

    /// What the library left open, registered or armed in all services, in words.
    std::vector<std::string> leftovers() const;

private:
    std::vector<std::string> journal_;
    FakeClock clock_{journal_};
    FakeLog log_{journal_};
    FakeInterfaces interfaces_{journal_};
    FakeLoop loop_{journal_, clock_};
    FakeCommands commands_{journal_, loop_};
    FakeIpc ipc_{journal_, *this};
    FakeDaemon daemon_{journal_};
    FakeWatchdog watchdog_{journal_};
    FakeEnvironment environment_{journal_};
};

}  // namespace nuv::platform
