// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>

#include "nuv/ieee802_11/ieee802_11_element.hpp"

namespace nuv::ieee802_11 {

/// VHT Capabilities (ID 191; IEEE Std 802.11-2020, 9.4.2.157). Both fields are carried verbatim;
/// bit numbers are those of the standard's field.
class NUV_EXPORT IEEE802_11_VHTCapabilities
    : public IEEE802_11_LayoutElement<IEEE802_11_VHTCapabilities,
                                      IEEE802_11_Element_ID::VHT_CAPABILITIES> {
public:
    /// VHT Capabilities Information.
    const std::bitset<32>& get_info_bits() const { return info_bits_; }
    void set_info_bits(const std::bitset<32>& value) { info_bits_ = value; }
    /// Supported VHT-MCS and NSS Set.
    const std::bitset<64>& get_supported_bits() const { return supported_bits_; }
    void set_supported_bits(const std::bitset<64>& value) { supported_bits_ = value; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    std::bitset<32> info_bits_;
    std::bitset<64> supported_bits_;
};

}  // namespace nuv::ieee802_11
