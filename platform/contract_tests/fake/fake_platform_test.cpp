// SPDX-License-Identifier: Apache-2.0
// What the test double promises beyond the contract.
#include "nuv_platform/fake/fake_platform.hpp"

#include "nuv_platform/clock.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/ifwatch.h"
#include "tests/support/test.hpp"

namespace nuv::platform {
namespace {

using Lines = std::vector<std::string>;

class FakePlatformTest : public testing::Test {
protected:
    FakePlatform& fake = *FakePlatform::current();
};

TEST_F(FakePlatformTest, ClockMovesReadingsAndLogTimesTogether) {
    using namespace std::chrono_literals;
    Lines lines;
    clogger* const logger = clogger_get(nullptr);
    const auto keep = [](void* ctx, const char* line) {
        static_cast<Lines*>(ctx)->emplace_back(line);
    };
    ASSERT_EQ(clogger_add_function(logger, keep, &lines, 0, 31, CLOGGER_FIELD_TIME), 0);
    clogger__err(logger, "f", "g", 1, "start");
    EXPECT_EQ(nuv_clock_monotonic_ns(), 1);
    fake.clock().advance(25h + 1500ms);
    clogger__err(logger, "f", "g", 1, "later");
    EXPECT_EQ(fake.clock().now(), 25h + 1500ms + 1ns);
    EXPECT_EQ(nuv_clock_monotonic_ns(), (25h + 1500ms + 2ns).count());
    EXPECT_EQ(nuv_clock_monotonic_ns(), (25h + 1500ms + 3ns).count());
    EXPECT_THROW(fake.clock().advance(-1ns), std::invalid_argument);
    EXPECT_EQ(clogger_rm_function(logger, keep, &lines), 0);
    EXPECT_EQ(lines, (Lines{"1970-01-01T00:00:00.000Z: start", "1970-01-02T01:00:01.500Z: later"}));
}

TEST_F(FakePlatformTest, EachServiceHasItsJournalAndItsRefusals) {
    std::array<std::uint8_t, 6> address{};
    fake.interfaces().set_hwaddr("wlan0", {2, 0, 0, 0, 0, 1});
    fake.interfaces().fail_next("if_get_hwaddr", -19);
    EXPECT_EQ(if_get_hwaddr("wlan0", address.data()), -19);
    EXPECT_EQ(if_get_hwaddr("wlan0", address.data()), 0);
    EXPECT_EQ(address[0], 2);

    fake.log().fail_next("clogger_alloc", 0);
    EXPECT_EQ(clogger_alloc("refused"), nullptr);
    EXPECT_EQ(fake.log().journal(), Lines{R"(clogger_alloc("refused"))"});
    EXPECT_EQ(fake.interfaces().journal(), Lines{});
    EXPECT_EQ(fake.journal(), fake.log().journal());

    EXPECT_THROW(fake.log().fail_next("if_get_hwaddr", -1), std::invalid_argument);
    EXPECT_THROW(fake.interfaces().fail_next("clogger_alloc", 0), std::invalid_argument);
    EXPECT_THROW(fake.clock().fail_next("nuv_clock_monotonic_ns", 0), std::invalid_argument);
}

}  // namespace
}  // namespace nuv::platform
