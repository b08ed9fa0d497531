// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

/// The boot environment of the test double: at first empty. Refusable: `vistrom_getenv`.
class NUV_PLATFORM_EXPORT FakeEnvironment final : public FakeService {
public:
    explicit FakeEnvironment(std::vector<std::string>& shared_journal);

    void set(const std::string& key, const std::string& value) { values_[key] = value; }
    /// The value, or null without such a key.
    const std::string* get(const std::string& key) const;

private:
    std::map<std::string, std::string> values_;
};

}  // namespace nuv::platform
