// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/rsn_security.hpp"

#include <algorithm>
#include <array>
#include <span>

namespace nuv::ieee802_11 {

namespace {

using Suite = IEEE802_11_CipherSuite;

/// One or two suites.
struct Suites {
    explicit(false) constexpr Suites(std::uint8_t a) : suites{Suite(a), Suite()}, size(1) {}
    constexpr Suites(std::uint8_t a, std::uint8_t b) : suites{Suite(a), Suite(b)}, size(2) {}

    std::span<const Suite> span() const { return {suites.data(), size}; }
    bool matches(const IEEE802_11_RSNElement::Suites& others) const {
        return std::ranges::is_permutation(span(), others);
    }

    std::array<Suite, 2> suites;
    std::size_t size;
};

struct Row {
    WLANSecurity security{};
    Suite group_data;
    Suites pairwise;
    Suites akm;
};

/// What each mode is on the air, in both directions.
constexpr std::array<Row, 8> rows{{
    {WLANSecurity::WPAPSK, Suite(Suite::TKIP), {Suite::TKIP}, {Suite::AKM_PSK}},
    {WLANSecurity::WPA2PSK, Suite(Suite::CCMP_128), {Suite::CCMP_128}, {Suite::AKM_PSK}},
    {WLANSecurity::WPA_WPA2_MIXED,
     Suite(Suite::TKIP),
     {Suite::TKIP, Suite::CCMP_128},
     {Suite::AKM_PSK}},
    {WLANSecurity::WPAENT, Suite(Suite::TKIP), {Suite::TKIP}, {Suite::AKM_802_1X}},
    {WLANSecurity::WPA2ENT, Suite(Suite::CCMP_128), {Suite::CCMP_128}, {Suite::AKM_802_1X}},
    {WLANSecurity::WPA3PSK, Suite(Suite::CCMP_128), {Suite::CCMP_128}, {Suite::AKM_SAE}},
    {WLANSecurity::WPA2_WPA3_MIXED,
     Suite(Suite::CCMP_128),
     {Suite::CCMP_128},
     {Suite::AKM_PSK, Suite::AKM_SAE}},
    {WLANSecurity::OWE, Suite(Suite::CCMP_128), {Suite::CCMP_128}, {Suite::AKM_OWE}},
}};

}  // namespace

std::unique_ptr<IEEE802_11_RSNElement> create_rsn_element_from_security(WLANSecurity security) {
    auto rsn = std::make_unique<IEEE802_11_RSNElement>();
    const auto row = std::ranges::find(rows, security, &Row::security);
    if (row != rows.end()) {
        rsn->set_group_data(row->group_data);
        rsn->set_pairwise_cipher_list(row->pairwise.span());
        rsn->set_akm_suite_list(row->akm.span());
    } else if (security != WLANSecurity::NONE && security <= WLANSecurity::INVALID) {
        rsn->set_group_data(Suite({0, 0, 0}, Suite::USE_GROUP));
    }
    return rsn;
}

WLANSecurity security_from_rsn_element(const IEEE802_11_RSNElement& rsn) {
    if (!rsn.has_group_data()) {
        return WLANSecurity::NONE;
    }
    const auto row = std::ranges::find_if(rows, [&rsn](const Row& r) {
        return r.group_data == rsn.get_group_data() &&
               r.pairwise.matches(rsn.get_pairwise_cipher_list()) &&
               r.akm.matches(rsn.get_akm_suite_list());
    });
    return row != rows.end() ? row->security : WLANSecurity::UNDEFINED;
}

}  // namespace nuv::ieee802_11
