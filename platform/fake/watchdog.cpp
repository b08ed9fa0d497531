// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/watchdog.h"

#include <cerrno>

#include "nuv_platform/fake/fake_platform.hpp"
#include "platform/fake/call_text.hpp"

namespace nuv::platform {

FakeWatchdog::FakeWatchdog(std::vector<std::string>& shared_journal)
    : FakeService(shared_journal, {"watchdog_csock_init"}) {}

std::vector<std::string> FakeWatchdog::leftovers() const { return begun_; }

}  // namespace nuv::platform

using nuv::platform::call_text;
using nuv::platform::FakePlatform;

extern "C" {

int watchdog_csock_init(const char* name) {
    auto* const fake = FakePlatform::current();
    if (fake == nullptr) {
        return -ENODEV;
    }
    if (const auto refusal = nuv::platform::noted(fake->watchdog(), __func__, name)) {
        return *refusal;
    }
    fake->watchdog().begun() = {call_text(__func__, name)};
    return 0;
}

void watchdog_csock_trigger(void) {
    if (auto* const fake = FakePlatform::current()) {
        fake->watchdog().note(call_text(__func__));
    }
}

void watchdog_csock_exit(void) {
    if (auto* const fake = FakePlatform::current()) {
        fake->watchdog().note(call_text(__func__));
        fake->watchdog().begun().clear();
    }
}

}  // extern "C"
