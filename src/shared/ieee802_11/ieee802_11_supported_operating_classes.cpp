// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_supported_operating_classes.hpp"

#include <algorithm>

#include "internal/ieee802_11/element_layout.hpp"

namespace nuv::ieee802_11 {

using serialization::BinarySerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;

// Body: current operating class (1), capable operating classes (1 each), and, if there are any, 130
// and the operating class extension (1 each), 0 and the duples (2 each). IEEE Std 802.11-2020,
// 9.4.2.53, where 130 and 0 are the delimiters of the two sequences.
namespace {

constexpr std::uint8_t extension_delimiter = 130;
constexpr std::uint8_t duple_delimiter = 0;
constexpr std::size_t duple_size = 2;
using Duple = std::array<std::uint8_t, duple_size>;

}  // namespace

std::uint32_t IEEE802_11_SupportedOperatingClasses::get_length() const {
    const std::size_t body =
        1 + capable_opclasses_.size() +
        (extension_vector_.empty() ? 0 : 1 + extension_vector_.size()) +
        (duple_opclasses_.empty() ? 0 : 1 + duple_size * duple_opclasses_.size());
    return HEADER_LENGTH + static_cast<std::uint32_t>(body);
}

void IEEE802_11_SupportedOperatingClasses::write_body(std::ostream& os,
                                                      SerializationContext& ctx) const {
    using Octet = BinarySerializableType<std::uint8_t>;
    using List = BinarySerializableType<Classes>;
    Octet::serialize(os, ctx, current_opclass_);
    List::serialize(os, ctx, capable_opclasses_);
    if (!extension_vector_.empty()) {
        Octet::serialize(os, ctx, extension_delimiter);
        List::serialize(os, ctx, extension_vector_);
    }
    if (!duple_opclasses_.empty()) {
        Octet::serialize(os, ctx, duple_delimiter);
        BinarySerializableType<Duples>::serialize(os, ctx, duple_opclasses_);
    }
}

void IEEE802_11_SupportedOperatingClasses::read_body(impl::ByteCursor& body,
                                                     SerializationContext& /*ctx*/) {
    body.read(current_opclass_);
    capable_opclasses_.clear();
    extension_vector_.clear();
    duple_opclasses_.clear();

    Classes* list = &capable_opclasses_;
    const auto is_delimiter = [&](std::uint8_t octet) {
        return octet == duple_delimiter ||
               (octet == extension_delimiter && list == &capable_opclasses_);
    };
    for (;;) {
        const auto rest = body.rest();
        const auto end = std::ranges::find_if(rest, is_delimiter);
        list->append(rest.begin(), end);
        body.read_octets(static_cast<std::size_t>(end - rest.begin()));
        if (body.remaining() == 0) {
            return;
        }
        std::uint8_t delimiter = 0;
        body.read(delimiter);
        if (delimiter == duple_delimiter) {
            break;
        }
        list = &extension_vector_;
    }
    if (body.remaining() == 0 || body.remaining() % duple_size != 0) {
        throw SerializationException("Invalid length: must fit IEEE802_11_DupleOperatingClass");
    }
    layout::read_list(body, body.remaining() / duple_size, duple_opclasses_);
}

bool IEEE802_11_SupportedOperatingClasses::equal_fields(
    const IEEE802_11_Element_Base& other) const {
    const auto& o = static_cast<const IEEE802_11_SupportedOperatingClasses&>(other);
    return current_opclass_ == o.current_opclass_ && capable_opclasses_ == o.capable_opclasses_ &&
           extension_vector_ == o.extension_vector_ && duple_opclasses_ == o.duple_opclasses_;
}

void IEEE802_11_SupportedOperatingClasses::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    layout::visit_value(visitor, "current_opclass", current_opclass_);
    layout::visit_list(visitor, "capable_opclasses", capable_opclasses_);
    layout::visit_list(visitor, "extension_vector", extension_vector_);
    // Two octets in wire order: a pair of classes, not a number.
    visitor.open_list("duple_opclasses");
    for (const std::uint16_t duple : duple_opclasses_) {
        layout::visit_numbers(
            visitor, {},
            Duple{static_cast<std::uint8_t>(duple >> 8U), static_cast<std::uint8_t>(duple)});
    }
    visitor.close_list();
}

void IEEE802_11_SupportedOperatingClasses::assign_fields(IEEE802_11_FieldSource& source) {
    layout::assign_value(source, "current_opclass", current_opclass_);
    layout::assign_list(source, "capable_opclasses", capable_opclasses_);
    layout::assign_list(source, "extension_vector", extension_vector_);
    duple_opclasses_.clear();
    for (std::size_t count = source.open_list("duple_opclasses"); count > 0; --count) {
        const Duple duple = layout::assign_numbers<duple_size>(source, {});
        duple_opclasses_.push_back(static_cast<std::uint16_t>(duple[0] << 8U | duple[1]));
    }
    source.close_list();
}

}  // namespace nuv::ieee802_11
