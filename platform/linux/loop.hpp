// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/common/loop.hpp"

namespace nuv::platform {

/// The loop of this process.
Loop& process_loop() noexcept;

}  // namespace nuv::platform
