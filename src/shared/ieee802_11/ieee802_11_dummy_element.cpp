// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_dummy_element.hpp"

#include <array>
#include <istream>

#include "internal/byte_cursor.hpp"
#include "nuv/binary_serializable_type.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;
using serialization::SerializationException;

namespace {

constexpr std::uint32_t oui_length = 3;
constexpr const char* length_error = "Invalid length: must fit an OUI";

}  // namespace

template <class Source>
void IEEE802_11_DummyElement::read_from(Source& source, SerializationContext& ctx) {
    IEEE802_11_Element_ID id{};
    impl::read_value(source, ctx, id);
    if (id != id_) {
        throw SerializationException("Invalid type");
    }
    std::uint8_t length = 0;
    impl::read_value(source, ctx, length);
    if (is_extended()) {
        impl::read_value(source, ctx, extension_);
        if (length == 0) {
            throw SerializationException(length_error);
        }
        --length;
    } else if (id_ == IEEE802_11_Element_ID::VENDOR_SPECIFIC && length < oui_length) {
        throw SerializationException(length_error);
    }
    body_length_ = length;
    impl::skip(source, body_length_);
    if (source.fail()) {
        throw SerializationException("Seek failed");
    }
}

void IEEE802_11_DummyElement::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

void IEEE802_11_DummyElement::deserialize_from(impl::ByteCursor& source,
                                               SerializationContext& ctx) {
    read_from(source, ctx);
}

std::uint32_t IEEE802_11_DummyElement::get_length() const {
    return body_length_ + (is_extended() ? 3U : 2U);
}

void IEEE802_11_DummyElement::visit_fields(IEEE802_11_FieldVisitor& /*visitor*/) const {}

void IEEE802_11_DummyElement::check_fields() const {
    const std::uint32_t length = get_length() - 2;
    if (length > 255 || (id_ == IEEE802_11_Element_ID::VENDOR_SPECIFIC && length < oui_length)) {
        throw SerializationException(length_error);
    }
}

void IEEE802_11_DummyElement::write_body(std::ostream& os, SerializationContext& ctx) const {
    static constexpr std::array<std::uint8_t, 255> zeros{};
    using Octets = std::span<const std::uint8_t>;
    serialization::BinarySerializableType<Octets>::serialize(os, ctx,
                                                             Octets(zeros).first(body_length_));
}

bool IEEE802_11_DummyElement::equal_fields(const IEEE802_11_Element_Base& other) const {
    return body_length_ == static_cast<const IEEE802_11_DummyElement&>(other).body_length_;
}

}  // namespace nuv::ieee802_11
