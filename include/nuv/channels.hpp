// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// The whole channel model: channels, radios, operating classes and their validation.

#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/nss_table.hpp"
#include "nuv/operating_class_deduction.hpp"
#include "nuv/type_validator.hpp"
#include "nuv/wlan_radio.hpp"
