// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/daemon.h"

#include <cerrno>

#include "nuv_platform/fake/fake_platform.hpp"
#include "platform/fake/call_text.hpp"

namespace nuv::platform {

FakeDaemon::FakeDaemon(std::vector<std::string>& shared_journal)
    : FakeService(shared_journal, {"daemon_start"}) {}

}  // namespace nuv::platform

using nuv::platform::call_text;
using nuv::platform::FakePlatform;

extern "C" {

int daemon_start(int a, int b) {
    auto* const fake = FakePlatform::current();
    return fake == nullptr ? -ENODEV
                           : nuv::platform::noted(fake->daemon(), __func__, a, b).value_or(0);
}

void daemon_ready(void) {
    if (auto* const fake = FakePlatform::current()) {
        fake->daemon().note(call_text(__func__));
    }
}

void daemon_start_failed(void) {
    if (auto* const fake = FakePlatform::current()) {
        fake->daemon().note(call_text(__func__));
    }
}

}  // extern "C"
