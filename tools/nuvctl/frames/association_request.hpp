// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "frames/management_frame.hpp"

namespace nuvctl {

/// A decoded (re)association request. What the body is too short for is absent. Valid as long as the
/// octets it was read from.
struct AssociationRequest : DecodedFrame {
    static constexpr std::string_view association = "association_request";
    static constexpr std::string_view reassociation = "reassociation_request";

    std::optional<nuv::MACAddress> current_ap;
    std::optional<std::uint16_t> capability_information;
    std::optional<std::uint16_t> listen_interval;  ///< in beacon intervals, as the air means it
    std::span<const std::uint8_t> ssid;

    /// The last element of this class that could be read: the one that counts.
    template <class E>
    const E* find() const {
        for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
            if (const auto* typed = dynamic_cast<const E*>(element->typed.get())) {
                return typed;
            }
        }
        return nullptr;
    }
    bool has(nuv::ieee802_11::IEEE802_11_Element_ID id) const;
    bool has(nuv::ieee802_11::IEEE802_11_Element_ID_Extension extension) const;
};

/// The request in a frame, none if the frame is something else.
std::optional<AssociationRequest> association_request(const ManagementFrame& frame);

}  // namespace nuvctl
