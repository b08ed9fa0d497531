// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/string_to_logmask.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace nuv::logging {
namespace {

TEST(StringToLogmask, KnowsTheLevelsInAnyCase) {
    const std::pair<const char*, int> rows[] = {{"TRACE", 31}, {"DEBUG", 15}, {"INFO", 7},
                                                {"WARN", 3},   {"ERROR", 1},  {"warn", 3},
                                                {"Warn", 3},   {"tRaCe", 31}};
    for (const auto& [name, mask] : rows) {
        EXPECT_EQ(string_to_logmask(name), mask) << name;
    }
}

TEST(StringToLogmask, ThrowsForOtherNames) {
    for (const char* name : {"", "WARNING", " WARN", "WARN "}) {
        try {
            string_to_logmask(name);
            ADD_FAILURE() << name;
        } catch (const std::out_of_range& e) {
            EXPECT_STREQ(e.what(), "map::at");
        }
    }
}

}  // namespace
}  // namespace nuv::logging
