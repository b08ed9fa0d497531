// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// Containers, time-stamped values, byte order and the version: what every layer uses.

#include "nuv/byte_order.hpp"
#include "nuv/dynamic_value.hpp"
#include "nuv/export.hpp"
#include "nuv/fixed_byte_buffer.hpp"
#include "nuv/printable.hpp"
#include "nuv/small_set.hpp"
#include "nuv/small_vector.hpp"
#include "nuv/text_argument.hpp"
#include "nuv/version.hpp"
