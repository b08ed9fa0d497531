// SPDX-License-Identifier: Apache-2.0
#include "frames/security.hpp"

#include <algorithm>
#include <array>

#include "nuv/ieee802_11/rsn_security.hpp"

namespace nuvctl {

namespace {

using nuv::WLANSecurity;
using nuv::ieee802_11::IEEE802_11_CipherSuite;
using nuv::ieee802_11::IEEE802_11_RSNElement;
using ID = nuv::ieee802_11::IEEE802_11_Element_ID;

using VendorType = std::array<std::uint8_t, 4>;  // OUI and type, as on the air
constexpr VendorType wpa{0x00, 0x50, 0xF2, 1};
constexpr VendorType wps{0x00, 0x50, 0xF2, 4};
constexpr VendorType osen{0x50, 0x6F, 0x9A, 18};

/// The body behind OUI and type of the first element of this kind, none without one.
std::optional<Octets> vendor_body(const AssociationRequest& request, const VendorType& type) {
    for (const Element& element : request.elements) {
        if (static_cast<ID>(element.id) == ID::VENDOR_SPECIFIC &&
            element.body.size() >= type.size() &&
            std::ranges::equal(element.body.first(type.size()), type)) {
            return element.body.subspan(type.size());
        }
    }
    return std::nullopt;
}

/// `body` has version (2 octets), group cipher (4), pairwise ciphers and AKMs; each list is a count (2)
/// and suites of 4 octets. Numbers are little-endian.
WLANSecurity security_from_wpa_body(Octets body) {
    constexpr std::size_t suite = 4;
    constexpr std::size_t pairwise = 2 + suite;
    constexpr VendorType enterprise{0x00, 0x50, 0xF2, 1};
    constexpr VendorType psk{0x00, 0x50, 0xF2, 2};
    const auto pairwise_count = little_endian(body, pairwise, 2);
    const std::size_t akms = pairwise + 2 + suite * pairwise_count.value_or(0);
    if (!pairwise_count || little_endian(body, 0, 2) != 1U || little_endian(body, akms, 2) != 1U ||
        body.size() < akms + 2 + suite) {
        return WLANSecurity::UNDEFINED;
    }
    const Octets akm = body.subspan(akms + 2, suite);
    return std::ranges::equal(akm, enterprise) ? WLANSecurity::WPAENT
           : std::ranges::equal(akm, psk)      ? WLANSecurity::WPAPSK
                                               : WLANSecurity::UNDEFINED;
}

bool is_psk_alone(const IEEE802_11_RSNElement& rsn) {
    const auto& akms = rsn.get_akm_suite_list();
    return akms.size() == 1 && akms[0] == IEEE802_11_CipherSuite(IEEE802_11_CipherSuite::AKM_PSK);
}

}  // namespace

Security security_of(const AssociationRequest& request) {
    const auto wpa_body = vendor_body(request, wpa);
    const WLANSecurity wpa_mode =
        wpa_body ? security_from_wpa_body(*wpa_body) : WLANSecurity::UNDEFINED;
    if (const auto* rsn = request.find<IEEE802_11_RSNElement>()) {
        const bool mixed = wpa_mode == WLANSecurity::WPAPSK && is_psk_alone(*rsn);
        return {mixed ? WLANSecurity::WPA_WPA2_MIXED : security_from_rsn_element(*rsn), {}};
    }
    if (request.has(IEEE802_11_RSNElement::ELEMENT_ID)) {
        return {WLANSecurity::UNDEFINED, {}};
    }
    if (wpa_body) {
        return {wpa_mode, {}};
    }
    constexpr std::uint16_t privacy = 0x0010;
    if ((request.capability_information.value_or(0) & privacy) == 0) {
        return {};
    }
    constexpr auto wapi = static_cast<ID>(68);
    return {WLANSecurity::UNDEFINED, vendor_body(request, wps)    ? "WPS"
                                     : request.has(wapi)          ? "WAPI"
                                     : vendor_body(request, osen) ? "OSEN"
                                                                  : "WEP?"};
}

}  // namespace nuvctl
