// SPDX-License-Identifier: Apache-2.0
#include "nuv/type_with_ratio.hpp"

#include <gtest/gtest.h>

#include "support/json_text.hpp"

using nuv::DataRate;
using nuv::KiloHertz;
using nuv::MegaHertz;
using nuv::ratio_cast;

static_assert(!std::is_constructible_v<KiloHertz, MegaHertz>);
static_assert(KiloHertz(5) + KiloHertz(3) - KiloHertz(1) == KiloHertz(7));
static_assert(KiloHertz(-1) < KiloHertz(0) && DataRate(4294967295U) > DataRate(0));
static_assert(ratio_cast<MegaHertz>(KiloHertz(5180999)) == MegaHertz(5180));
static_assert(ratio_cast<KiloHertz>(MegaHertz(606960)) == KiloHertz(606960000));

TEST(TypeWithRatio, IsABareIntegerOf64BitsInJson) {
    DataRate rate;
    EXPECT_EQ(nuv::test::from_json("{\"r\":4294967295}", "r", rate), "");
    EXPECT_EQ(nuv::test::to_json(rate), "4294967295");
    EXPECT_EQ(nuv::test::to_json(rate, 0), "Serialization of std::int64_t failed");
}
