// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/fake/fake_service.hpp"

#include <stdexcept>

namespace nuv::platform {

FakeService::FakeService(std::vector<std::string>& shared,
                         const std::vector<std::string>& refusable)
    : shared_(shared) {
    for (const auto& function : refusable) {
        failures_[function];
    }
}

void FakeService::fail_next(const std::string& function, int result, unsigned times) {
    const auto found = failures_.find(function);
    if (found == failures_.end()) {
        throw std::invalid_argument("this service cannot refuse \"" + function + '"');
    }
    found->second = {result, times};
}

std::optional<int> FakeService::take_failure(std::string_view function) {
    auto& failure = failures_.find(function)->second;
    if (failure.times == 0) {
        return std::nullopt;
    }
    --failure.times;
    return failure.result;
}

void FakeService::note(const std::string& call) {
    journal_.push_back(call);
    shared_.push_back(call);
}

}  // namespace nuv::platform
