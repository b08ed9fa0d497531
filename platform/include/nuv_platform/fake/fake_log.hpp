// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "nuv_platform/export.h"
#include "nuv_platform/fake/fake_service.hpp"

namespace nuv::platform {

/// The logger of the test double: remembers every record it was given, masked or not. Handles are
/// names that live as long as the process; loggers, outputs, filters and levels begin anew with
/// each FakePlatform. Records show the time of FakeClock. Outputs other than callbacks write nothing.
/// Refusable: every call that changes the configuration, and the three that look up a handle.
class NUV_PLATFORM_EXPORT FakeLog final : public FakeService {
public:
    struct Record {
        int level = 0;
        std::string logger;
        std::string module;  ///< "" for a record written straight to the logger
        std::string file;
        std::string function;
        int line = 0;
        int debug_arg = 0;
        std::string text;

        bool operator==(const Record&) const = default;
        /// For the messages of failed tests.
        NUV_PLATFORM_EXPORT friend std::ostream& operator<<(std::ostream& os, const Record& record);
    };

    explicit FakeLog(std::vector<std::string>& shared_journal);
    ~FakeLog();

    std::vector<Record> records() const;
    /// The texts of records(), alone.
    std::vector<std::string> texts() const;
    void clear_records();

    /// The calls that added an output or filter which nobody removed.
    std::vector<std::string> leftovers() const;

    /// For the fake's C functions.
    struct State;
    State& state() { return *state_; }

private:
    std::unique_ptr<State> state_;
};

}  // namespace nuv::platform
