// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/fixed_byte_buffer.hpp"

namespace nuv {

/// The name of a wireless network: 0 to 32 arbitrary octets (IEEE 802.11-2020, 9.4.2.2).
using SSID = FixedByteBuffer<32>;

}  // namespace nuv
