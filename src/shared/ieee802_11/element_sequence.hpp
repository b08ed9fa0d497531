// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "byte_cursor.hpp"
#include "nuv/ieee802_11/ieee802_11_element_sequence.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::ieee802_11 {

/// Reads elements up to the end of `source`, which is whole, each into what `make(id, extension)`
/// makes for it. Throws SerializationException "Invalid length" for one that runs past the end, else
/// the element's.
template <class Make>
void read_sequence(impl::ByteCursor& source, serialization::SerializationContext& ctx, Make make,
                   IEEE802_11_ElementSequence& sequence) {
    constexpr std::size_t header = 2;
    sequence.clear();
    while (source.remaining() != 0) {
        const std::span<const std::uint8_t> rest = source.rest();
        if (rest.size() < header || rest.size() - header < rest[1]) {
            throw serialization::SerializationException("Invalid length");
        }
        // An element without room for an extension is none that has a class.
        const auto extension = rest[1] > 0
                                   ? static_cast<IEEE802_11_Element_ID_Extension>(rest[header])
                                   : IEEE802_11_Element_ID_Extension::NO_EXTENSION;
        std::unique_ptr<IEEE802_11_Element_Base> element =
            make(static_cast<IEEE802_11_Element_ID>(rest[0]), extension);
        element->deserialize_from(source, ctx);
        sequence.add_element(std::move(element), rest.first(rest.size() - source.remaining()));
    }
}

/// Shows each element as an object of its ID, extension and fields.
void visit_sequence(IEEE802_11_FieldVisitor& visitor, std::string_view name,
                    const IEEE802_11_ElementSequence& sequence);

}  // namespace nuv::ieee802_11
