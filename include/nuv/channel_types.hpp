// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "nuv/export.hpp"

/// @file
/// Channel widths, frequency bands and the flags of a channel.
///
/// Values are stored, compared and ordered by number. Texts are exact: case counts, nothing is
/// trimmed. For a value without enumerator enum_to_string gives the enumeration's text for invalid
/// values, for some with the number behind it; operator<< writes what enum_to_string gives.
/// string_to_enum accepts the enumerators' texts only and leaves `out` untouched when it returns
/// false.

namespace nuv {

/// Width of a channel. The order of the numbers is not the order of the bandwidths: 80+80 MHz
/// stands between 160 and 320 MHz.
enum class ChannelWidth : std::uint8_t {
    HT20 = 0,    ///< "20 MHz"
    HT40 = 1,    ///< "40 MHz"
    HT80 = 2,    ///< "80 MHz"
    HT160 = 3,   ///< "160 MHz"
    HT8080 = 4,  ///< "80+80 MHz"
    HT320 = 5,   ///< "320 MHz"
    INVALID = 6,
};
NUV_EXPORT std::string enum_to_string(ChannelWidth value);
NUV_EXPORT bool string_to_enum(std::string_view text, ChannelWidth& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, ChannelWidth value);

/// Bit positions of a channel's 5-bit state flags.
enum class ChannelStateBit : std::uint8_t {
    DFS_CLEAR = 0,
    RADAR_FOUND = 1,
    CAC_RUNNING = 2,
    PRECAC_TODO = 3,
    INTERFERENCE_FOUND = 4,
    INVALID_MAX = 5,
};
NUV_EXPORT std::string enum_to_string(ChannelStateBit value);
NUV_EXPORT bool string_to_enum(std::string_view text, ChannelStateBit& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, ChannelStateBit value);

/// State flags of a channel, indexed by ChannelStateBit.
using ChannelStateBits = std::bitset<5>;

/// Bit positions of a channel's 10-bit capability flags. Bits 0 to 5 are the widths that it may be
/// used with.
enum class ChannelCapabilityBit : std::uint8_t {
    HT20 = 0,
    HT40 = 1,
    HT80 = 2,
    HT160 = 3,
    HT8080 = 4,
    HT320 = 5,
    DFS = 6,
    DFS_WEATHER = 7,
    PRIMARY_LOWER_BEHAVIOR = 8,  ///< at 40 MHz the secondary channel lies above
    PRIMARY_UPPER_BEHAVIOR = 9,  ///< at 40 MHz the secondary channel lies below
    INVALID_MAX = 10,
};
NUV_EXPORT std::string enum_to_string(ChannelCapabilityBit value);
NUV_EXPORT bool string_to_enum(std::string_view text, ChannelCapabilityBit& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, ChannelCapabilityBit value);

/// Capability flags of a channel, indexed by ChannelCapabilityBit.
using ChannelCapabilityBits = std::bitset<10>;

/// Bit positions of a channel's 2-bit configuration flags.
enum class ChannelConfigBit : std::uint8_t {
    REMOTE_DISTURBER = 0,
    PERFORMANCE_OPTIMIZATION = 1,
    INVALID_MAX = 2,
};
NUV_EXPORT std::string enum_to_string(ChannelConfigBit value);
NUV_EXPORT bool string_to_enum(std::string_view text, ChannelConfigBit& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, ChannelConfigBit value);

/// Configuration flags of a channel, indexed by ChannelConfigBit.
using ChannelConfigBits = std::bitset<2>;

/// Frequency band of a channel; INVALID_BAND_MAX stands for no band.
enum class FrequencyBand : std::uint8_t {
    BAND_2_4_GHZ = 0,
    BAND_5_GHZ = 1,
    BAND_6_GHZ = 2,
    INVALID_BAND_MAX = 3,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, FrequencyBand value);

/// Frequency band with the 5 GHz band in parts, as the frequency conversions tell it.
enum class DetailedFrequencyBand : std::uint8_t {
    BAND_2_4_GHZ = 0,
    BAND_5_GHZ_LOWER = 1,
    BAND_5_GHZ_UPPER = 2,
    BAND_5_GHZ_OTHER = 3,  ///< no frequency yields it
    BAND_6_GHZ = 4,
    INVALID_BAND = 5,
};

}  // namespace nuv
