// SPDX-License-Identifier: Apache-2.0
#include "nuv/dynamic_value.hpp"

#include "internal/optional_platform.hpp"

namespace nuv {

std::int64_t steady_now_ns() noexcept { return impl::monotonic_ns(); }

}  // namespace nuv
