// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// The whole channel model, the radio vocabulary included.

#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/channel_types.hpp"
#include "nuv/dynamic_value.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/ieee802_11_codes.hpp"
#include "nuv/nss_table.hpp"
#include "nuv/operating_class_deduction.hpp"
#include "nuv/type_validator.hpp"
#include "nuv/type_with_ratio.hpp"
#include "nuv/wlan_radio.hpp"
#include "nuv/wlan_types.hpp"
