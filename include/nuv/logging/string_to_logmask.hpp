// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "nuv/export.hpp"

namespace nuv::logging {

/// The mask of an output that takes the named level and the more severe ones: "ERROR" 1, "WARN" 3,
/// "INFO" 7, "DEBUG" 15, "TRACE" 31, in any case of letters. Throws std::out_of_range "map::at" for
/// another name.
NUV_EXPORT std::uint16_t string_to_logmask(const std::string& name);

}  // namespace nuv::logging
