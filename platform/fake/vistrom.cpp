// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/vistrom.h"

#include "nuv_platform/fake/fake_platform.hpp"

namespace nuv::platform {

FakeEnvironment::FakeEnvironment(std::vector<std::string>& shared_journal)
    : FakeService(shared_journal, {"vistrom_getenv"}) {}

const std::string* FakeEnvironment::get(const std::string& key) const {
    const auto found = values_.find(key);
    return found != values_.end() ? &found->second : nullptr;
}

}  // namespace nuv::platform

extern "C" const char* vistrom_getenv(const char* key) {
    auto* const fake = nuv::platform::FakePlatform::current();
    if (fake == nullptr || key == nullptr || fake->environment().take_failure(__func__)) {
        return nullptr;
    }
    const std::string* const value = fake->environment().get(key);
    return value != nullptr ? value->c_str() : nullptr;
}
