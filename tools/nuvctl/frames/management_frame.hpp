// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "frames/element.hpp"
#include "frames/link_layer.hpp"
#include "nuv/mac_address.hpp"

namespace nuvctl {

/// The first octet of the frames that are decoded: version 0, type management, subtype.
enum class Subtype : std::uint8_t {
    ASSOCIATION_REQUEST = 0x00,
    REASSOCIATION_REQUEST = 0x20,
    ACTION = 0xD0,
    ACTION_NO_ACK = 0xE0,
};

constexpr std::size_t mac_address_length = nuv::MACAddress::MAC_ADDR_LEN;

/// The address in the first six of `octets`.
nuv::MACAddress address_in(Octets octets);

/// A management frame whose body can be read (IEEE Std 802.11-2020, 9.3.3.2). Valid as long as its
/// octets.
struct ManagementFrame {
    Subtype subtype;
    nuv::MACAddress receiver;
    nuv::MACAddress transmitter;
    nuv::MACAddress bssid;
    Octets body;
};

/// None for another frame, for one that is encrypted and for one that is not the first of its
/// fragments.
std::optional<ManagementFrame> management_frame(const MacFrame& frame);

/// What is wrong with a frame.
struct FrameError {
    std::string message;
    std::optional<std::size_t> element;  ///< index of the element at which it happened
};

/// What all decoded frames have.
struct DecodedFrame {
    std::string_view type;
    nuv::MACAddress station;
    nuv::MACAddress bssid;
    std::vector<Element> elements;
    std::optional<FrameError> error;  ///< none when the whole frame was read
};

}  // namespace nuvctl
