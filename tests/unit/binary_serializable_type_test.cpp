// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "nuv/serialization_exception.hpp"

TEST(SerializationException, KeepsItsMessage) {
    EXPECT_STREQ(nuv::serialization::SerializationException("text").what(), "text");
}
