// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "frames/association_request.hpp"
#include "nuv/wlan_types.hpp"

namespace nuvctl {

/// How the station wants to be protected.
struct Security {
    nuv::WLANSecurity mode = nuv::WLANSecurity::NONE;
    /// The mechanism of an UNDEFINED station without an RSN and a WPA element: "WPS", "WAPI", "OSEN",
    /// or "WEP?" for none of these. Empty otherwise.
    std::string_view detail;
};

/// The RSN element decides, as security_from_rsn_element() maps it; UNDEFINED if it cannot be read.
/// Together with a WPA element it is WPA_WPA2_MIXED if the only AKM of both is PSK. A WPA element alone
/// gives WPAENT or WPAPSK by its only AKM, whatever its ciphers. Without both, a station that sets
/// Privacy is UNDEFINED, any other NONE.
Security security_of(const AssociationRequest& request);

}  // namespace nuvctl
