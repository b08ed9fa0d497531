// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>

#include "nuv/ieee802_11/ieee802_11_element.hpp"

namespace nuv::ieee802_11 {

/// RM Enabled Capabilities (ID 70; IEEE Std 802.11-2020, 9.4.2.44): what a station can measure.
class NUV_EXPORT IEEE802_11_RMEnabledCapabilities
    : public IEEE802_11_LayoutElement<IEEE802_11_RMEnabledCapabilities,
                                      IEEE802_11_Element_ID::RM_ENABLED_CAPABILITIES> {
public:
    /// Bit numbers are those of the standard's field.
    const std::bitset<40>& get_capabilities() const { return capabilities_; }
    void set_capabilities(const std::bitset<40>& value) { capabilities_ = value; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    std::bitset<40> capabilities_;
};

}  // namespace nuv::ieee802_11
