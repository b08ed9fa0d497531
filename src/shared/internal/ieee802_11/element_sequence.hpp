// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

/// Makes a new, empty element for an ID and an extension.
using ElementMaker = std::function<std::unique_ptr<IEEE802_11_Element_Base>(
    IEEE802_11_Element_ID, IEEE802_11_Element_ID_Extension)>;
/// The name of an element, empty without one.
using ElementName = std::string (*)(IEEE802_11_Element_ID, IEEE802_11_Element_ID_Extension);

/// Shows each element as an object of its ID, extension, name and fields.
void visit_sequence(IEEE802_11_FieldVisitor& visitor, std::string_view name,
                    const IEEE802_11_ElementSequence& sequence, ElementName name_of);

/// Takes the elements as visit_sequence() shows them.
void assign_sequence(IEEE802_11_FieldSource& source, std::string_view name,
                     const ElementMaker& make, IEEE802_11_ElementSequence& sequence);

/// As serialize_impl() writes the element, but with a Length octet that counts what follows. Throws
/// SerializationException also for more than an element holds.
std::vector<std::uint8_t> written_with_real_length(const IEEE802_11_Element_Base& element);

/// Reads the element, which takes all octets. Throws SerializationException.
void read_whole(IEEE802_11_Element_Base& element, std::span<const std::uint8_t> octets);

}  // namespace nuv::impl
