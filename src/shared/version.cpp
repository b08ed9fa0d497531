// SPDX-License-Identifier: Apache-2.0
#include "nuv/version.hpp"

namespace nuv {

int version() noexcept { return NUV_VERSION; }

}  // namespace nuv
