// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "internal/byte_cursor.hpp"
#include "nuv/ieee802_11/ieee802_11_element_sequence.hpp"
#include "nuv/ieee802_11/ieee802_11_field_source.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::impl {

using ieee802_11::IEEE802_11_Element_Base;
using ieee802_11::IEEE802_11_Element_ID;
using ieee802_11::IEEE802_11_Element_ID_Extension;
using ieee802_11::IEEE802_11_ElementSequence;
using ieee802_11::IEEE802_11_FieldSource;
using ieee802_11::IEEE802_11_FieldVisitor;

/// Reads elements up to the end of `source`, which is whole, each into what `make(id, extension)`
/// makes for it. Throws SerializationException "Invalid length" for one that runs past the end, else
/// the element's.
template <class Make>
void read_sequence(ByteCursor& source, serialization::SerializationContext& ctx, Make make,
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

/// Takes the fields of one element and appends it; an element of any kind can be given by its octets,
/// "body_hex".
void assign_element(IEEE802_11_FieldSource& source,
                    std::unique_ptr<IEEE802_11_Element_Base> element,
                    IEEE802_11_Element_ID_Extension extension,
                    IEEE802_11_ElementSequence& sequence);

/// Takes the elements as visit_sequence() shows them, each as what `make(id, extension)` makes for it.
template <class Make>
void assign_sequence(IEEE802_11_FieldSource& source, std::string_view name, Make make,
                     IEEE802_11_ElementSequence& sequence) {
    sequence.clear();
    for (std::size_t count = source.open_list(name); count > 0; --count) {
        source.open_object({});
        const auto id = static_cast<IEEE802_11_Element_ID>(source.number("id", 8));
        const auto extension =
            id == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION
                ? static_cast<IEEE802_11_Element_ID_Extension>(source.number("extension", 8))
                : IEEE802_11_Element_ID_Extension::NO_EXTENSION;
        source.open_object("fields");
        assign_element(source, make(id, extension), extension, sequence);
        source.close_object();
        source.close_object();
    }
    source.close_list();
}

}  // namespace nuv::impl
