// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "frames/association_request.hpp"
#include "nuv/ieee802_11/rsn_security.hpp"

namespace nuvctl {

/// The text of the security mode that the station asks for: "NONE" without an RSN element, and
/// "UNDEFINED" with one that cannot be read.
inline std::string security_text(const AssociationRequest& request) {
    using nuv::ieee802_11::IEEE802_11_RSNElement;
    const auto* rsn = request.find<IEEE802_11_RSNElement>();
    if (rsn != nullptr) {
        return enum_to_string(security_from_rsn_element(*rsn));
    }
    return enum_to_string(request.has(IEEE802_11_RSNElement::ELEMENT_ID)
                              ? nuv::WLANSecurity::UNDEFINED
                              : nuv::WLANSecurity::NONE);
}

}  // namespace nuvctl
