// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"

#include "ieee802_11/element_layout.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;
using serialization::SerializationException;

void IEEE802_11_MultiLink::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    visitor.octets("body_hex", body_);
}

void IEEE802_11_MultiLink::check_id(std::uint8_t id) const {
    if (id != static_cast<std::uint8_t>(get_type())) {
        throw SerializationException("Invalid ID");
    }
}

void IEEE802_11_MultiLink::check_extension(std::uint8_t extension) const {
    if (extension != static_cast<std::uint8_t>(get_extension_type())) {
        throw SerializationException("Unexpected ID");
    }
}

void IEEE802_11_MultiLink::write_body(std::ostream& os, SerializationContext& ctx) const {
    serialization::BinarySerializableType<IEEE802_11_Body>::serialize(os, ctx, body_);
}

void IEEE802_11_MultiLink::read_body(impl::ByteCursor& body, SerializationContext& /*ctx*/) {
    layout::read_list(body, body.remaining(), body_);
}

bool IEEE802_11_MultiLink::equal_fields(const IEEE802_11_Element_Base& other) const {
    return body_ == static_cast<const IEEE802_11_MultiLink&>(other).body_;
}

}  // namespace nuv::ieee802_11
