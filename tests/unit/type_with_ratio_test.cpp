// SPDX-License-Identifier: Apache-2.0
#include "nuv/type_with_ratio.hpp"

#include <gtest/gtest.h>

#include <type_traits>

#include "support/json_text.hpp"

using nuv::DataRate;
using nuv::KiloHertz;
using nuv::MegaHertz;
using nuv::ratio_cast;

static_assert(!std::is_convertible_v<KiloHertz, MegaHertz> &&
              !std::is_constructible_v<KiloHertz, MegaHertz>);
static_assert(KiloHertz(5) + KiloHertz(3) - KiloHertz(1) == KiloHertz(7));
static_assert(KiloHertz(-1) < KiloHertz(0) && DataRate(4294967295U) > DataRate(0));
static_assert(ratio_cast<MegaHertz>(KiloHertz(5180999)) == MegaHertz(5180));
static_assert(ratio_cast<MegaHertz>(KiloHertz(-1999)) == MegaHertz(-1));
static_assert(ratio_cast<KiloHertz>(MegaHertz(606960)) == KiloHertz(606960000));

TEST(TypeWithRatio, IsABareIntegerOf64BitsInJson) {
    DataRate rate;
    nuv::test::read_json("{\"r\":4294967295}", "r", rate);
    EXPECT_EQ(rate, DataRate(4294967295U));
    EXPECT_EQ(nuv::test::json_of([&](auto& stream) { nuv::test::write_json(stream, rate); }),
              "4294967295");
    EXPECT_EQ(nuv::test::write_failure(rate), "Serialization of std::int64_t failed");
    EXPECT_EQ(nuv::test::read_failure<KiloHertz>("{}", "r"),
              "Deserialization of std::int64_t \"r\" failed");
}
