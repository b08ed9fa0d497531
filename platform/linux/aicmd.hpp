// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv_platform/aicmd.h"

namespace nuv::platform {

/// LOOPSHOW, IPCSHOW, LOGSHOW and LOGLEVEL.
aicmd_library& platform_commands() noexcept;

}  // namespace nuv::platform
