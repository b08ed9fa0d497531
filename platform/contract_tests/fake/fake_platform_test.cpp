// SPDX-License-Identifier: Apache-2.0
// What the test double promises beyond the contract.
#include "nuv_platform/fake/fake_platform.hpp"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "nuv_platform/clog.h"
#include "nuv_platform/ifwatch.h"

namespace nuv::platform {
namespace {

using Lines = std::vector<std::string>;

class FakePlatformTest : public testing::Test {
protected:
    FakePlatform& fake = *FakePlatform::current();
};

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
}

}  // namespace
}  // namespace nuv::platform
