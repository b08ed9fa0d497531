// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <concepts>
#include <cstdint>
#include <utility>

#include "nuv/channel_types.hpp"
#include "nuv/export.hpp"
#include "nuv/ieee802_11_codes.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/operating_class_deduction.hpp"
#include "nuv/type_with_ratio.hpp"
#include "nuv/wlan_types.hpp"

/// @file
/// Whether a value that came from elsewhere may be used.
///
/// Of an enumeration that are the numbers with a meaning, unless told otherwise.

namespace nuv {

class ChannelEntry;
class ChannelInfo;
class ChannelList;
class NSSTable;

constexpr bool is_valid(WLANCapability value) noexcept { return value < WLANCapability::INVALID; }
constexpr bool is_valid(WLANPhymode value) noexcept { return value < WLANPhymode::INVALID_MAX; }
/// Also of 4, which has no meaning: what passes here is a number in range.
constexpr bool is_valid(WLANOpmode value) noexcept { return value < WLANOpmode::INVALID; }
constexpr bool is_valid(WLANIfaceState value) noexcept { return value < WLANIfaceState::INVALID; }
constexpr bool is_valid(WLANSecurity value) noexcept { return value < WLANSecurity::INVALID; }
constexpr bool is_valid(ChannelWidth value) noexcept { return value < ChannelWidth::INVALID; }
constexpr bool is_valid(FrequencyBand value) noexcept {
    return value < FrequencyBand::INVALID_BAND_MAX;
}
constexpr bool is_valid(PHYType value) noexcept {
    return value == PHYType::DSSS || (value >= PHYType::OFDM && value <= PHYType::EDMG) ||
           value == PHYType::NGV || value == PHYType::EHT;
}
constexpr bool is_valid(WNMAction value) noexcept {
    return value < WNMAction::INVALID_WNM_ACTION_MAX;
}
constexpr bool is_valid(RequestModeBit value) noexcept {
    return value < RequestModeBit::INVALID_REQUEST_MODE_BIT_MAX;
}
constexpr bool is_valid(BTMStatusCode value) noexcept {
    return value < BTMStatusCode::INVALID_BTM_STATUS_CODE_MAX;
}
constexpr bool is_valid(MeasurementRequestModeBit value) noexcept {
    return value < MeasurementRequestModeBit::INVALID_MEASUREMENT_REQUEST_MODE_BIT_MAX;
}
constexpr bool is_valid(BeaconReportFrameType value) noexcept {
    return value < BeaconReportFrameType::INVALID_BEACON_REPORT_FRAME_TYPE_MAX;
}

/// Whether any bit is set. A template, so that no integer passes for a set.
template <std::same_as<std::bitset<32>> Bits>
bool is_valid(const Bits& bits) noexcept {
    return bits.any();
}

/// As is_valid_mac_address().
NUV_EXPORT bool is_valid(const MACAddress& address) noexcept;

/// Neither rate is zero.
using DataRatePair = std::pair<DataRate, DataRate>;
constexpr bool is_valid(const DataRatePair& rates) noexcept {
    return rates.first != DataRate{} && rates.second != DataRate{};
}
/// The second pair exceeds the first one nowhere.
constexpr bool is_valid(const std::pair<DataRatePair, DataRatePair>& rates) noexcept {
    return rates.second.first <= rates.first.first && rates.second.second <= rates.first.second;
}

/// Received channel power and average noise (IEEE 802.11-2020, 9.4.2.37 and 9.4.2.40): 255 is "not
/// available", 221 to 254 are reserved.
constexpr bool is_valid_rcpi(std::uint8_t value) noexcept { return value <= 220 || value == 255; }
constexpr bool is_valid_anpi(std::uint8_t value) noexcept { return value <= 220 || value == 255; }
constexpr bool is_valid_channel_utilization(std::uint8_t percent) noexcept {
    return percent <= 100;
}
constexpr bool is_valid_link_id(std::uint8_t value) noexcept { return value <= 14; }

/// Whether the GLOBAL table of operating classes has it.
NUV_EXPORT bool is_valid_global_operating_class(std::uint8_t opclass);
/// Whether it has the class, and the class has every one of the channels; its centers; the channels
/// that Annex E defines it by, which for wide classes are the centers.
NUV_EXPORT bool is_valid_global_operating_class_channelset(
    std::uint8_t opclass, const OperatingClassDeduction::ChannelSet& channels);
NUV_EXPORT bool is_valid_global_operating_class_center_channelset(
    std::uint8_t opclass, const OperatingClassDeduction::ChannelSet& channels);
NUV_EXPORT bool is_valid_global_operating_class_definition_channelset(
    std::uint8_t opclass, const OperatingClassDeduction::ChannelSet& channels);

/// From 1 to 8 streams at most.
NUV_EXPORT bool is_valid(const NSSTable& table) noexcept;

/// These log the first thing wrong as a warning of the module "type_validator"; channel 0, which
/// stands for no channel, is refused in silence.
///
/// An entry has a frequency that goes with its channel, any capability, no contradictory state, no
/// measurement out of range, and a 20 MHz operating class. So channel 2 of the 6 GHz band at
/// 5935000 kHz is refused, on purpose, although it has a class. Deliberate: 191, 195 and 199 at
/// 5955, 5975 and 5995 MHz pass, because the numbers of the 5 GHz band reach that far. State, noise
/// and utilization are not part of an entry's JSON: in what was read from there they are never
/// wrong.
NUV_EXPORT bool is_valid(const ChannelEntry& entry);
/// Every entry is.
NUV_EXPORT bool is_valid(const ChannelList& list);
/// The info has an operating class, punctures nothing beyond its segment and not its primary
/// channel, and its frequencies are those of the class: the primary one a channel, the centers those
/// of any segment. A segment that was never set is not looked at. Deliberate: each segment of 80+80
/// MHz is looked at by itself, so the two may be the same one or lie in two bands.
NUV_EXPORT bool is_valid(const ChannelInfo& info);

}  // namespace nuv
