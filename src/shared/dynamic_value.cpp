// SPDX-License-Identifier: Apache-2.0
#include "nuv/dynamic_value.hpp"

#include "nuv_platform/clock.h"

namespace nuv {

std::int64_t steady_now_ns() noexcept { return nuv_clock_monotonic_ns(); }

}  // namespace nuv
