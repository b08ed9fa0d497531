// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <set>

#include "nuv/channel_types.hpp"
#include "nuv/export.hpp"
#include "nuv/ieee802_11_codes.hpp"
#include "nuv/type_with_ratio.hpp"
#include "nuv/wlan_types.hpp"

/// @file
/// Conversions between frequencies, channel numbers, bands, channel widths, capability bits and PHY
/// modes. All are pure; what has no counterpart gives 0 or the invalid value of the result's type.
/// A frequency of 0 kHz is one that is not known.

namespace nuv {

/// Channel number of a channel's center frequency. The low 8 bits of the division are kept also
/// between the bands; 0 from 7125000 to 56160000 kHz, above 64800000 kHz and for no frequency.
NUV_EXPORT std::uint8_t frequency_to_channel(KiloHertz frequency) noexcept;

/// Center frequency of a channel above the band's starting frequency: `channel` steps of 5 MHz, of
/// 2160 MHz in the 60 GHz band (IEEE 802.11-2020, Annex E).
NUV_EXPORT KiloHertz channel_to_frequency(KiloHertz band_start, std::uint8_t channel) noexcept;

/// Frequency of channel 0 of the band (IEEE 802.11-2020, Annex E), 0 kHz for no band.
NUV_EXPORT KiloHertz band_to_starting_frequency(FrequencyBand band) noexcept;

/// Band whose channels' range holds the frequency; INVALID_BAND in the gaps between the ranges. The
/// ranges are closed: 7125000 kHz is still 6 GHz although it has no channel number.
NUV_EXPORT DetailedFrequencyBand frequency_to_detailed_band(KiloHertz frequency) noexcept;
NUV_EXPORT FrequencyBand frequency_to_band(KiloHertz frequency) noexcept;

/// Width with the given bandwidth, never 80+80 MHz. 25 MHz is read as 20 MHz on purpose: such is
/// the channel spacing of 2.4 GHz operating classes.
NUV_EXPORT ChannelWidth frequency_to_channel_width(MegaHertz bandwidth) noexcept;

/// Bandwidth of a width; 80+80 MHz gives that of one segment, 80.
NUV_EXPORT MegaHertz channel_width_to_frequency(ChannelWidth width) noexcept;

/// Width bits of a channel that supports `width` and what lies below. 80+80 MHz does not include
/// 160 MHz, and 320 MHz does not include 80+80 MHz.
NUV_EXPORT ChannelCapabilityBits channel_width_capability_bits(ChannelWidth width) noexcept;

/// Best width among the bits: 320, then 80+80 before 160, down to 20 MHz.
NUV_EXPORT ChannelWidth capability_bits_max_channel_width(ChannelCapabilityBits bits) noexcept;
NUV_EXPORT std::set<ChannelWidth> capability_bits_channel_widths(ChannelCapabilityBits bits);

/// Greatest width that both sides can use. 80+80 MHz shares no more than 80 MHz with another width.
NUV_EXPORT ChannelWidth find_common_channel_width(ChannelWidth a, ChannelWidth b) noexcept;

NUV_EXPORT PHYType phymode_to_phytype(WLANPhymode mode) noexcept;

/// PHY type of the highest mode in the set.
NUV_EXPORT PHYType phymodesupportbits_to_phytype(WLANPhymodeBits modes) noexcept;

/// Best mode in the set that `band` allows.
NUV_EXPORT WLANPhymode get_max_phy_mode(FrequencyBand band, WLANPhymodeBits modes) noexcept;

}  // namespace nuv
