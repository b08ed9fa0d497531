// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "nuv_platform/export.h"

namespace nuv::platform {

/// What every service of the test double has: a journal of its calls, and refusals on demand.
class NUV_PLATFORM_EXPORT FakeService {
public:
    FakeService(const FakeService&) = delete;
    FakeService& operator=(const FakeService&) = delete;

    /// The next `times` calls of the C function `function` do nothing and return `result`; one that
    /// returns a pointer returns NULL. Throws std::invalid_argument when the service has no such
    /// function, or none that can be refused.
    void fail_next(const std::string& function, int result, unsigned times = 1);

    /// The calls of this service that changed something, refused ones included, as they would be
    /// written in C: `clogger_add_file("default", "/tmp/log", 4096, NULL, 31, 0)`. Handles are shown
    /// by name, other pointers as `*`.
    const std::vector<std::string>& journal() const { return journal_; }

    /// For the fake's C functions: the result that the test wants from this call of `function`, if
    /// any. It must be one that fail_next() accepts.
    std::optional<int> take_failure(std::string_view function);
    /// For the fake's C functions: appends to the journals.
    void note(const std::string& call);

protected:
    /// `shared` is the journal of all services, `refusable` the names that fail_next() accepts.
    FakeService(std::vector<std::string>& shared, const std::vector<std::string>& refusable);
    ~FakeService() = default;

private:
    struct Failure {
        int result = 0;
        unsigned times = 0;
    };

    std::vector<std::string>& shared_;
    std::vector<std::string> journal_;
    std::map<std::string, Failure, std::less<>> failures_;  // one entry per refusable function
};

}  // namespace nuv::platform
