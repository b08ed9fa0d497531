// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>

#include "nuv/byte_order.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"

namespace nuv::ieee802_11 {

/// Mobility Domain (ID 54; IEEE Std 802.11-2020, 9.4.2.46), the fast BSS transition's.
class NUV_EXPORT IEEE802_11_MobilityDomain
    : public IEEE802_11_LayoutElement<IEEE802_11_MobilityDomain,
                                      IEEE802_11_Element_ID::MOBILITY_DOMAIN> {
public:
    /// The Mobility Domain Identifier. Deliberate: its first octet on the wire is the most
    /// significant one here, both ends of this system agree on it.
    std::uint16_t get_mdid() const { return mdid_; }
    void set_mdid(std::uint16_t mdid) { mdid_ = mdid; }
    /// The same as the standard means it, whose first octet is the least significant one.
    std::uint16_t get_mdid_standard() const { return swap_octets(mdid_); }
    void set_mdid_standard(std::uint16_t mdid) { mdid_ = swap_octets(mdid); }

    /// FT Capability and Policy: bit 0 Fast BSS Transition over DS, bit 1 Resource Request Protocol
    /// Capability.
    const std::bitset<8>& get_capabilities() const { return capabilities_; }
    void set_capabilities(const std::bitset<8>& capabilities) { capabilities_ = capabilities; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    std::uint16_t mdid_ = 0;
    std::bitset<8> capabilities_;
};

}  // namespace nuv::ieee802_11
