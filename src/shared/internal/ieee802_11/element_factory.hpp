// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"

/// Which class reads an element of an association request, at its top or in a per-STA profile, and
/// which slot of the frame it has.
namespace nuv::impl::factory {

using ieee802_11::IEEE802_11_EHTMaps;
using ieee802_11::IEEE802_11_Element_Base;
using ieee802_11::IEEE802_11_Element_ID;
using ieee802_11::IEEE802_11_Element_ID_Extension;
using ieee802_11::IEEE802_11_HECapabilities;

using ElementPtr = std::unique_ptr<IEEE802_11_Element_Base>;

/// The ID and, for ID 255, the extension in one number.
constexpr std::uint16_t key(IEEE802_11_Element_ID id) { return static_cast<std::uint16_t>(id); }
constexpr std::uint16_t key(IEEE802_11_Element_ID_Extension extension) {
    return static_cast<std::uint16_t>(0x100U + static_cast<unsigned>(extension));
}
constexpr std::uint16_t key(IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension) {
    return id == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION ? key(extension) : key(id);
}
constexpr std::size_t number_of_keys = 0x200;

/// How many slots a frame has, and what an element without one maps to.
constexpr std::size_t number_of_slots = 26;

/// The slot of each key: where a received octet leads in one step.
using SlotTable = std::array<std::uint8_t, number_of_keys>;
extern const SlotTable slot_table;

inline std::size_t slot_of(IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension) {
    return slot_table[key(id, extension)];
}

/// A new, empty element; a raw one for an ID without a class, and for EHT Capabilities whose maps
/// are not known (null). `extension` counts only for ID 255.
ElementPtr make_element(IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension,
                        const IEEE802_11_EHTMaps* maps);

/// The shape of the EHT Capabilities of a station with these HE Capabilities.
IEEE802_11_EHTMaps eht_maps(const IEEE802_11_HECapabilities& he);

}  // namespace nuv::impl::factory

namespace nuv::ieee802_11 {
namespace factory = impl::factory;
}
