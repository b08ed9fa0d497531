// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>

#include "nuv/export.hpp"

/// @file
/// Code numbers of IEEE 802.11; clauses are those of IEEE Std 802.11-2020. operator<< writes the
/// name of a code, or the enumeration's text for invalid values.

namespace nuv {

/// PHY type (dot11PHYType, Annex C).
enum class PHYType : std::uint8_t {
    DSSS = 2,
    OFDM = 4,
    HRDSSS = 5,
    ERP = 6,
    HT = 7,
    DMG = 8,
    VHT = 9,
    TVHT = 10,
    S1G = 11,
    CDMG = 12,
    CMMG = 13,
    HE = 14,
    EDMG = 15,
    NGV = 17,
    EHT = 18,
    INVALID_PHYTYPE_MAX = 19,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, PHYType value);

/// WNM Action field (9.6.13).
enum class WNMAction : std::uint8_t {
    EVENT_REQUEST = 0,
    EVENT_REPORT = 1,
    DIAGNOSTIC_REQUEST = 2,
    DIAGNOSTIC_REPORT = 3,
    LOCATION_CONFIGURATION_REQUEST = 4,
    LOCATION_CONFIGURATION_RESPONSE = 5,
    BSS_TRANSITION_MANAGEMENT_QUERY = 6,
    BSS_TRANSITION_MANAGEMENT_REQUEST = 7,
    BSS_TRANSITION_MANAGEMENT_RESPONSE = 8,
    FMS_REQUEST = 9,
    FMS_RESPONSE = 10,
    COLLOCATED_INTERFERENCE_REQUEST = 11,
    COLLOCATED_INTERFERENCE_REPORT = 12,
    TFS_REQUEST = 13,
    TFS_RESPONSE = 14,
    TFS_NOTIFY = 15,
    WNM_SLEEP_MODE_REQUEST = 16,
    WNM_SLEEP_MODE_RESPONSE = 17,
    TIM_BROADCAST_REQUEST = 18,
    TIM_BROADCAST_RESPONSE = 19,
    QOS_TRAFFIC_CAPABILITY_UPDATE = 20,
    CHANNEL_USAGE_REQUEST = 21,
    CHANNEL_USAGE_RESPONSE = 22,
    DMS_REQUEST = 23,
    DMS_RESPONSE = 24,
    TIMING_MEASUREMENT_REQUEST = 25,
    WNM_NOTIFICATION_REQUEST = 26,
    WNM_NOTIFICATION_RESPONSE = 27,
    WNM_NOTIFY_RESPONSE = 28,
    INVALID_WNM_ACTION_MAX = 29,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, WNMAction value);

/// Bits of the Request Mode field of a BSS Transition Management Request frame (9.6.13.9).
enum class RequestModeBit : std::uint8_t {
    PREFERRED_CANDIDATE_LIST_INCLUDED = 0,
    ABRIDGED = 1,
    DISASSOCIATION_IMMINENT = 2,
    BSS_TERMINATION_INCLUDED = 3,
    ESS_DISASSOCIATION_INCLUDED = 4,
    LINK_REMOVAL_IMMINENT = 5,
    RESERVED_6 = 6,
    RESERVED_7 = 7,
    INVALID_REQUEST_MODE_BIT_MAX = 8,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, RequestModeBit value);

/// Status code of a BSS Transition Management Response frame (9.6.13.10).
enum class BTMStatusCode : std::uint8_t {
    ACCEPT = 0,
    REJECT_UNSPECIFIED_REASON = 1,
    REJECT_INSUFFICIENT_BEACON_OR_PROBE_RESPONSE_FRAMES_RECEIVED = 2,
    REJECT_INSUFFICIENT_AVAILABLE_CAPACITY_FROM_ALL_CANDIDATES = 3,
    REJECT_BSS_TERMINATION_UNDESIRED = 4,
    REJECT_BSS_TERMINATION_DELAY_REQUESTED = 5,
    REJECT_STA_BSS_TRANSITION_CANDIDATE_LIST_PROVIDED = 6,
    REJECT_NO_SUITABLE_BSS_TRANSITION_CANDIDATES = 7,
    REJECT_LEAVING_ESS = 8,
    INVALID_BTM_STATUS_CODE_MAX = 9,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, BTMStatusCode value);

/// Transition query reason of a BSS Transition Management Query frame (9.6.13.8).
enum class BTMReasonCode : std::uint8_t {
    UNSPECIFIED = 0,
    EXCESSIVE_FRAME_LOSS_OR_POOR_CONDITIONS = 1,
    EXCESSIVE_DELAY_FOR_CURRENT_TRAFFIC_STREAMS = 2,
    INSUFFICIENT_QOS_CAPACITY_FOR_CURRENT_TRAFFIC_STREAMS = 3,
    FIRST_ASSOCIATION_TO_ESS = 4,
    LOAD_BALANCING = 5,
    BETTER_AP_FOUND = 6,
    DEAUTHENTICATED_OR_DISASSOCIATED_FROM_PREVIOUS_AP = 7,
    AP_FAILED_IEEE_802_1X_EAP_AUTHENTIFICATION = 8,  ///< misspelt; peers and log readers match it
    AP_FAILED_4_WAY_HANDSHAKE = 9,
    RECEIVED_TOO_MANY_REPLAY_COUNTER_FAILURES = 10,
    RECEIVED_TOO_MANY_DATA_MIC_FAILURES = 11,
    EXEEDED_MAXIMUM_NUMBER_OF_RETRANSMISSIONS = 12,  ///< misspelt; peers and log readers match it
    RECEIVED_TOO_MANY_BROADCAST_DISASSOCIATIONS = 13,
    RECEIVED_TOO_MANY_BROADCAST_DEAUTHENTICATIONS = 14,
    PREVIOUS_TRANSITION_FAILED = 15,
    LOW_RSSI = 16,
    ROAM_FROM_A_NON_IEEE_802_11_SYSTEM = 17,
    TRANSITION_DUE_TO_RECEIVE_BSS_TRANSITION_REQUEST_FRAME = 18,
    PREFERRED_BSS_TRANSITION_CANDIDATE_LIST_INCLUDED = 19,
    LEAVING_ESS = 20,
    RESERVED_MIN = 21,
    RESERVED_MAX = 255,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, BTMReasonCode value);

/// Bits of the Measurement Request Mode field (9.4.2.20).
enum class MeasurementRequestModeBit : std::uint8_t {
    PARALLEL = 0,
    ENABLE = 1,
    REQUEST = 2,
    REPORT = 3,
    DURATION_MANDATORY = 4,
    RESERVED_5 = 5,
    RESERVED_6 = 6,
    RESERVED_7 = 7,
    INVALID_MEASUREMENT_REQUEST_MODE_BIT_MAX = 8,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, MeasurementRequestModeBit value);

/// Measurement type of Measurement Request and Report elements (9.4.2.20, 9.4.2.21).
enum class MeasurementType : std::uint8_t {
    BASIC = 0,
    CLEAR_CHANNEL_ASSESSMENT = 1,
    RECEIVE_POWER_INDICATION_HISTOGRAM = 2,
    CHANNEL_LOAD = 3,
    NOISE_HISTOGRAM = 4,
    BEACON = 5,
    FRAME = 6,
    STA_STATISTICS = 7,
    LCI = 8,
    TRANSMIT_STREAM = 9,
    MULTICAST_DIAGNOSTICS = 10,
    LOCATION_CIVIC = 11,
    LOCATION_IDENTIFIER = 12,
    DIRECTIONAL_CHANNEL_QUALITY = 13,
    DIRECTIONAL_MEASUREMENT = 14,
    DIRECTIONAL_STATISTICS = 15,
    FINE_TIMING_MEASUREMENT_RANGE = 16,
    INVALID_MEASUREMENT_TYPE_RESERVED_MIN = 17,
    INVALID_MEASUREMENT_TYPE_RESERVED_MAX = 254,
    MEASUREMENT_PAUSE = 255,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, MeasurementType value);

/// Measurement mode of a Beacon request (9.4.2.20).
enum class BeaconMeasurementMode : std::uint8_t {
    PASSIV = 0,  ///< misspelt; peers and log readers match it
    ACTIVE = 1,
    BEACON_TABLE = 2,
    INVALID_MEASUREMENT_MODE_RESERVED_MIN = 3,
    INVALID_MEASUREMENT_MODE_RESERVED_MAX = 255,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, BeaconMeasurementMode value);

/// Frame type in the Reported Frame Information of a Beacon report (9.4.2.21).
enum class BeaconReportFrameType : std::uint8_t {
    BEACON_OR_PROBE_RESPONSE = 0,
    MEASUREMENT_PILOT = 1,
    INVALID_BEACON_REPORT_FRAME_TYPE_MAX = 2,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, BeaconReportFrameType value);

/// Bit positions in the 32-bit BSSID Information of a Neighbor Report element (9.4.2.36). 23 to 31
/// are reserved and print their number.
enum class BSSInformationBit : std::uint8_t {
    AP_REACHABILITY = 0,  ///< two bits, 0 and 1
    SECURTY = 2,          ///< misspelt; peers and log readers match it
    KEY_SCOPE = 3,
    CAPABILITIES = 4,  ///< six bits, 4 to 9: IEEE802_11_CapabilityBit
    MOBILITY_DOMAIN = 10,
    HT = 11,
    VHT = 12,
    FTM = 13,
    HE = 14,
    HE_ER = 15,
    COLOCATED_AP = 16,
    UNSOLICITED_PROBE_RESPONSE_ACTIVE = 17,
    MEMBERS_OF_ESS_WITH_24_5_GHZ_COLOCATED_AP = 18,
    OCT_SUPPORTED_WITH_REPORTING_AP = 19,
    COLOCATED_WITH_6_GHZ_AP = 20,
    EHT = 21,
    DMG_POSITIONING = 22,
    INVALID_BSS_INFORMATION_MAX = 32,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, BSSInformationBit value);

/// Bits of the Capabilities part of the BSSID Information, counted from its bit 4 (9.4.2.36).
enum class IEEE802_11_CapabilityBit : std::uint8_t {
    SPECTRUM_MANAGEMENT = 0,
    QOS = 1,
    APSD = 2,
    RRM = 3,
    DELAYED_BA = 4,
    IMMEDIATE_BA = 5,
    INVALID_CAPABILITY_MAX = 6,
};
NUV_EXPORT std::ostream& operator<<(std::ostream& os, IEEE802_11_CapabilityBit value);

}  // namespace nuv
