// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "nuv/export.hpp"
#include "nuv/ieee802_11/ieee802_11_rsn_element.hpp"
#include "nuv/wlan_types.hpp"

namespace nuv::ieee802_11 {

/// The RSN element that a BSS of this security mode announces. NONE, and a value beyond the
/// enumeration, give an element without suites. UNDEFINED, the WEP modes and INVALID give a group
/// suite with the OUI 00-00-00 (deliberate: mapped back it is UNDEFINED, not NONE).
NUV_EXPORT std::unique_ptr<IEEE802_11_RSNElement> create_rsn_element_from_security(
    WLANSecurity security);

/// The security mode of the station that sent this element; the order of its suites does not count.
/// NONE without a group data cipher, UNDEFINED for every combination that no mode has.
NUV_EXPORT WLANSecurity security_from_rsn_element(const IEEE802_11_RSNElement& rsn);

}  // namespace nuv::ieee802_11
