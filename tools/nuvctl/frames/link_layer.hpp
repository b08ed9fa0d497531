// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "frames/capture_file.hpp"

namespace nuvctl {

/// An IEEE 802.11 frame as a record holds it.
struct MacFrame {
    std::span<const std::uint8_t> octets;  ///< from the MAC header on, without the FCS
    bool bad_fcs;                          ///< the receiver found the FCS wrong
    bool truncated;                        ///< the frame had more octets on the air
};

/// Whether mac_frame() knows this link type.
bool is_ieee802_11(int link_type);
/// The link types that mac_frame() knows: "IEEE 802.11 (105), Prism (119), ...".
std::string ieee802_11_link_types();

/// The frame in a record, none where the record's own header is broken off or contradicts itself.
/// Throws FileError for a PPI header before something other than an IEEE 802.11 frame.
std::optional<MacFrame> mac_frame(int link_type, const Record& record);

}  // namespace nuvctl
