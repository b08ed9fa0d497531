// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>

#include "nuv/ieee802_11/ieee802_11_element.hpp"

namespace nuv::ieee802_11 {

/// HT Capabilities (ID 45; IEEE Std 802.11-2020, 9.4.2.55). Every field is carried verbatim; bit
/// numbers are those of the standard's field.
class NUV_EXPORT IEEE802_11_HTCapabilities
    : public IEEE802_11_LayoutElement<IEEE802_11_HTCapabilities,
                                      IEEE802_11_Element_ID::HT_CAPABILITIES> {
public:
    /// HT Capability Information.
    const std::bitset<16>& get_info_bits() const { return info_bits_; }
    void set_info_bits(const std::bitset<16>& value) { info_bits_ = value; }
    /// A-MPDU Parameters.
    const std::bitset<8>& get_ampdu_bits() const { return ampdu_bits_; }
    void set_ampdu_bits(const std::bitset<8>& value) { ampdu_bits_ = value; }
    /// Supported MCS Set.
    const std::bitset<128>& get_mcs_bits() const { return mcs_bits_; }
    void set_mcs_bits(const std::bitset<128>& value) { mcs_bits_ = value; }
    /// HT Extended Capabilities.
    const std::bitset<16>& get_extended_bits() const { return extended_bits_; }
    void set_extended_bits(const std::bitset<16>& value) { extended_bits_ = value; }
    /// Transmit Beamforming Capabilities.
    const std::bitset<32>& get_tbf_bits() const { return tbf_bits_; }
    void set_tbf_bits(const std::bitset<32>& value) { tbf_bits_ = value; }
    /// ASEL Capability.
    const std::bitset<8>& get_asel_bits() const { return asel_bits_; }
    void set_asel_bits(const std::bitset<8>& value) { asel_bits_ = value; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    std::bitset<16> info_bits_;
    std::bitset<8> ampdu_bits_;
    std::bitset<128> mcs_bits_;
    std::bitset<16> extended_bits_;
    std::bitset<32> tbf_bits_;
    std::bitset<8> asel_bits_;
};

}  // namespace nuv::ieee802_11
