// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "byte_cursor.hpp"
#include "nuv/ieee802_11/ieee802_11_element_sequence.hpp"

namespace nuv::ieee802_11 {

using ElementMaker = std::function<std::unique_ptr<IEEE802_11_Element_Base>(
    IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension)>;

/// Reads elements up to the end of `source`, which is whole, each into what `make` makes for it.
/// Throws SerializationException "Invalid length" for one that runs past the end, else the element's.
void read_sequence(impl::ByteCursor& source, serialization::SerializationContext& ctx,
                   const ElementMaker& make, IEEE802_11_ElementSequence& sequence);

/// Shows each element as an object of its ID, extension and fields.
void visit_sequence(IEEE802_11_FieldVisitor& visitor, std::string_view name,
                    const IEEE802_11_ElementSequence& sequence);

}  // namespace nuv::ieee802_11
