// SPDX-License-Identifier: Apache-2.0
// All of it is known to the compiler.
#include "nuv/type_with_ratio.hpp"

using nuv::DataRate;
using nuv::KiloHertz;
using nuv::MegaHertz;
using nuv::ratio_cast;

static_assert(!std::is_constructible_v<KiloHertz, MegaHertz>);
static_assert(KiloHertz(5) + KiloHertz(3) - KiloHertz(1) == KiloHertz(7));
static_assert(KiloHertz(-1) < KiloHertz(0) && DataRate(4294967295U) > DataRate(0));
static_assert(ratio_cast<MegaHertz>(KiloHertz(5180999)) == MegaHertz(5180));
static_assert(ratio_cast<KiloHertz>(MegaHertz(606960)) == KiloHertz(606960000));
