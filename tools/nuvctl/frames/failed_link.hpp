// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"

namespace nuvctl {

/// The link of a Multi-Link element that cannot be read.
struct FailedLink {
    struct Element {
        std::uint8_t id;
        std::optional<std::uint8_t> extension;
        std::size_t offset;
    };

    std::uint8_t link_id;
    std::size_t offset;              ///< of the per-STA profile's ID
    std::optional<Element> element;  ///< none where the profile fails before its elements
};

/// Looks for the link at which `element` failed to be read from the first of `octets`; the offsets
/// count from there. None where it failed elsewhere.
std::optional<FailedLink> failed_link(const nuv::ieee802_11::IEEE802_11_MultiLink& element,
                                      std::span<const std::uint8_t> octets);

}  // namespace nuvctl
