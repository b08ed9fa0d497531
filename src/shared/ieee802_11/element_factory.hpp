// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"

/// Which class reads an element of an association request, at its top or in a per-STA profile, and
/// which slot of the frame it has.
namespace nuv::ieee802_11::factory {

using ElementPtr = std::unique_ptr<IEEE802_11_Element_Base>;

/// How many slots a frame has, and what an element without one maps to.
constexpr std::size_t number_of_slots = 26;

/// A new, empty element; a raw one for an ID without a class, and for EHT Capabilities whose maps
/// are not known (null). `extension` counts only for ID 255.
ElementPtr make_element(IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension,
                        const IEEE802_11_EHTMaps* maps);

std::size_t slot_of(IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension);

/// The shape of the EHT Capabilities of a station with these HE Capabilities.
IEEE802_11_EHTMaps eht_maps(const IEEE802_11_HECapabilities& he);

}  // namespace nuv::ieee802_11::factory
