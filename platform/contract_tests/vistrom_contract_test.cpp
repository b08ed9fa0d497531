// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/vistrom.h"

#include <gtest/gtest.h>

TEST(VistromContract, NoValue) {
    for (const char* key : {"", "no_such_key", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(vistrom_getenv(key), nullptr);
    }
}
