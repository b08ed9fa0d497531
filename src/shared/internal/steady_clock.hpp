// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace nuv::impl {

using SteadyClock = std::int64_t (*)() noexcept;

/// Puts another clock behind steady_now_ns(), for tests, and returns the one before.
SteadyClock replace_steady_clock(SteadyClock clock) noexcept;

}  // namespace nuv::impl
