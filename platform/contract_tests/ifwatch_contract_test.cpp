// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/ifwatch.h"
#include "tests/support/test.hpp"

TEST(IfwatchContract, UnknownInterfaceIsRefusedAndLeavesTheOutputAlone) {
    std::array<std::uint8_t, 6> address{1, 2, 3, 4, 5, 6};
    const auto before = address;
    for (const char* name : {"nosuchif0", "", "a_name_of_sixteen"}) {
        EXPECT_LT(if_get_hwaddr(name, address.data()), 0) << name;
        EXPECT_EQ(address, before) << name;
    }
}
