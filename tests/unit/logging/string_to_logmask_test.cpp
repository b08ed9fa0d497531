// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/string_to_logmask.hpp"

#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

TEST(StringToLogmask, KnowsTheLevelsInAnyCaseAndThrowsForOtherNames) {
    const std::pair<const char*, const char*> rows[] = {
        {"TRACE", "31"},      {"DEBUG", "15"},  {"INFO", "7"},          {"WARN", "3"},
        {"ERROR", "1"},       {"warn", "3"},    {"Warn", "3"},          {"tRaCe", "31"},
        {"", "map::at"},      {"0", "map::at"}, {"WARNING", "map::at"}, {" WARN", "map::at"},
        {"WARN ", "map::at"},
    };
    for (const auto& [name, mask] : rows) {
        EXPECT_EQ(nuv::test::message_of<std::out_of_range>(
                      [&] { return nuv::logging::string_to_logmask(name); }),
                  mask)
            << name;
    }
}
