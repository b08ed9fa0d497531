// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// All addresses and identities.

#include "nuv/basic_version.hpp"
#include "nuv/device_id.hpp"
#include "nuv/ether_header.hpp"
#include "nuv/id.hpp"
#include "nuv/interface_name.hpp"
#include "nuv/ip_address.hpp"
#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/nid.hpp"
#include "nuv/prefixed_ip_address.hpp"
#include "nuv/tarvu_address.hpp"
