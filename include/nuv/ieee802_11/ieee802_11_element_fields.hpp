// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "nuv/export.hpp"
#include "nuv/ieee802_11/ieee802_11_element_base.hpp"

/// @file
/// Elements as fields without loss: the octets that a class does not keep stand beside its fields.

namespace nuv::ieee802_11 {

/// Shows an element that was read from `octets`, header included, as the object "fields". The object
/// also has "body_hex", the octets behind ID, Length and extension, if the fields alone would be
/// written as other octets. A raw element has no other field.
NUV_EXPORT void visit_element(IEEE802_11_FieldVisitor& visitor,
                              const IEEE802_11_Element_Base& element,
                              std::span<const std::uint8_t> octets);

/// Takes an element as visit_element() shows it. `extension` counts only for ID 255; `make` returns a
/// new, empty element of the class, raw without a class.
///
/// Returns the element's octets: those of "body_hex" if it is the only field, whether or not the class
/// can read them, or if the class reads the same fields from them. Otherwise these are the octets as
/// which the fields are written, with their real Length, and source.note() is called if "body_hex" was
/// given. Throws what the source throws, also for what cannot be written.
NUV_EXPORT std::vector<std::uint8_t> assign_element(
    IEEE802_11_FieldSource& source, IEEE802_11_Element_ID id,
    IEEE802_11_Element_ID_Extension extension,
    const std::function<std::unique_ptr<IEEE802_11_Element_Base>()>& make);

}  // namespace nuv::ieee802_11
