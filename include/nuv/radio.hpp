// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// The radio vocabulary: enumerations with their texts, frequencies and bands.

#include "nuv/channel_types.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/ieee802_11_codes.hpp"
#include "nuv/type_with_ratio.hpp"
#include "nuv/wlan_types.hpp"
