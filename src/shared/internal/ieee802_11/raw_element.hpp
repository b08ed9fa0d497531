// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "internal/byte_cursor.hpp"
#include "internal/ieee802_11/element_layout.hpp"
#include "nuv/binary_serializable_type.hpp"
#include "nuv/ieee802_11/ieee802_11_field_source.hpp"
#include "nuv/ieee802_11/ieee802_11_field_visitor.hpp"
#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

template <IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_RawElement<ID, ExtID>::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    if (!names().empty() && body_.size() == named_octets()) {
        layout::visit_bits(visitor, names(), body_);
    } else {
        visitor.octets("body_hex", body_);
    }
}

template <IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_RawElement<ID, ExtID>::assign_fields(IEEE802_11_FieldSource& source) {
    if (names().empty() || source.has("body_hex")) {
        body_ = source.octets("body_hex");
    } else {
        body_ = std::vector<std::uint8_t>(named_octets());
        layout::assign_bits(source, names(), {body_.data(), body_.size()});
    }
}

template <IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_RawElement<ID, ExtID>::write_body(std::ostream& os,
                                                  serialization::SerializationContext& ctx) const {
    serialization::BinarySerializableType<IEEE802_11_Body>::serialize(os, ctx, body_);
}

template <IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_RawElement<ID, ExtID>::read_body(impl::ByteCursor& body,
                                                 serialization::SerializationContext& /*ctx*/) {
    layout::read_list(body, body.remaining(), body_);
}

template <IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
bool IEEE802_11_RawElement<ID, ExtID>::equal_fields(const IEEE802_11_Element_Base& other) const {
    return body_ == static_cast<const IEEE802_11_RawElement&>(other).body_;
}

}  // namespace nuv::ieee802_11
