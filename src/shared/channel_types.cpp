// SPDX-License-Identifier: Apache-2.0
#include "nuv/channel_types.hpp"

#include "internal/enum_table.hpp"

namespace nuv {
namespace impl {

template <>
struct EnumTexts<ChannelWidth> {
    using enum ChannelWidth;
    static constexpr EnumRow<ChannelWidth> rows[] = {
        {HT20, "20 MHz"},      {HT40, "40 MHz"},
        {HT80, "80 MHz"},      {HT160, "160 MHz"},
        {HT8080, "80+80 MHz"}, {HT320, "320 MHz"},
        {INVALID, "INVALID"},  {OTHERWISE, "INVALID CHANNEL WIDTH ", RowKind::NUMBERED},
    };
};

template <>
struct EnumTexts<ChannelStateBit> {
    using enum ChannelStateBit;
    static constexpr EnumRow<ChannelStateBit> rows[] = {
        {DFS_CLEAR, "DFS_CLEAR"},
        {RADAR_FOUND, "RADAR_FOUND"},
        {CAC_RUNNING, "CAC_RUNNING"},
        {PRECAC_TODO, "PRECAC_TODO"},
        {INTERFERENCE_FOUND, "INTERFERENCE_FOUND"},
        {INVALID_MAX, "INVALID_MAX"},
        {OTHERWISE, "INVALID CHANNEL STATE"},
    };
};

template <>
struct EnumTexts<ChannelCapabilityBit> {
    using enum ChannelCapabilityBit;
    static constexpr EnumRow<ChannelCapabilityBit> rows[] = {
        {HT20, "HT20"},
        {HT40, "HT40"},
        {HT80, "HT80"},
        {HT160, "HT160"},
        {HT8080, "HT8080"},
        {HT320, "HT320"},
        {DFS, "DFS"},
        {DFS_WEATHER, "DFS_WEATHER"},
        {PRIMARY_LOWER_BEHAVIOR, "PRIMARY_LOWER_BEHAVIOR"},
        {PRIMARY_UPPER_BEHAVIOR, "PRIMARY_UPPER_BEHAVIOR"},
        {INVALID_MAX, "INVALID_MAX"},
        {OTHERWISE, "INVALID CHANNEL CAPABILITY"},
    };
};

template <>
struct EnumTexts<ChannelConfigBit> {
    using enum ChannelConfigBit;
    static constexpr EnumRow<ChannelConfigBit> rows[] = {
        {REMOTE_DISTURBER, "REMOTE_DISTURBER"},
        {PERFORMANCE_OPTIMIZATION, "PERFORMANCE_OPTIMIZATION"},
        {INVALID_MAX, "INVALID_MAX"},
        {OTHERWISE, "INVALID CHANNEL PROPERTY"},
    };
};

template <>
struct EnumTexts<FrequencyBand> {
    using enum FrequencyBand;
    static constexpr EnumRow<FrequencyBand> rows[] = {
        {BAND_2_4_GHZ, "2.4 GHz"},   {BAND_5_GHZ, "5 GHz"},
        {BAND_6_GHZ, "6 GHz"},       {INVALID_BAND_MAX, "INVALID BAND MAX"},
        {OTHERWISE, "INVALID BAND"},
    };
};

}  // namespace impl

NUV_DEFINE_ENUM_TEXTS(ChannelWidth)
NUV_DEFINE_ENUM_TEXTS(ChannelStateBit)
NUV_DEFINE_ENUM_TEXTS(ChannelCapabilityBit)
NUV_DEFINE_ENUM_TEXTS(ChannelConfigBit)
NUV_DEFINE_ENUM_OUTPUT(FrequencyBand)

}  // namespace nuv
