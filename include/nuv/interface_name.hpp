// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/fixed_byte_buffer.hpp"

namespace nuv {

/// The name of a network interface: at most 15 bytes, the IFNAMSIZ of Linux without its NUL.
using InterfaceName = FixedByteBuffer<15>;

}  // namespace nuv
