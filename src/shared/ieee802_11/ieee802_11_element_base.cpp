// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_element_base.hpp"

#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <typeinfo>

#include "internal/byte_cursor.hpp"
#include "internal/ieee802_11/element_body.hpp"
#include "internal/ieee802_11/fragmentation.hpp"
#include "nuv/ieee802_11/ieee802_11_field_source.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;
using serialization::SerializationException;
using Octet = serialization::BinarySerializableType<std::uint8_t>;

template <class Source>
void IEEE802_11_Element_Base::read_from(Source& source, SerializationContext& ctx) {
    std::uint8_t id = 0;
    std::uint8_t length = 0;
    impl::read_value(source, ctx, id);
    check_id(id);
    impl::read_value(source, ctx, length);
    check_length(length);
    if (length == impl::max_content) {
        if (const auto fragment = fragment_id()) {
            const impl::Reassembled content = impl::reassemble(source, ctx, *fragment);
            impl::ByteCursor cursor(content.octets, content.missing);
            read_content(cursor, ctx);
            return;
        }
    }
    auto content = impl::body_of(source, length);
    read_content(content.cursor(), ctx);
}

void IEEE802_11_Element_Base::read_content(impl::ByteCursor& content, SerializationContext& ctx) {
    if (get_type() == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION) {
        std::uint8_t extension = 0;
        content.read(extension);
        check_extension(extension);
    }
    read_body(content, ctx);
}

void IEEE802_11_Element_Base::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

void IEEE802_11_Element_Base::deserialize_from(impl::ByteCursor& source,
                                               SerializationContext& ctx) {
    read_from(source, ctx);
}

std::ios_base::iostate IEEE802_11_Element_Base::deserialize(std::span<const std::uint8_t> bytes,
                                                            SerializationContext& ctx) {
    impl::ByteCursor source(bytes);
    deserialize_from(source, ctx);
    return source.rdstate();
}

void IEEE802_11_Element_Base::write_content(std::ostream& os, SerializationContext& ctx) const {
    if (get_type() == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION) {
        Octet::serialize(os, ctx, static_cast<std::uint8_t>(get_extension_type()));
    }
    write_body(os, ctx);
}

void IEEE802_11_Element_Base::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    check_fields();
    const auto id = static_cast<std::uint8_t>(get_type());
    const std::uint32_t length = get_length() - 2;
    const auto fragment = fragment_id();
    if (fragment && length > impl::max_content) {
        std::ostringstream content;
        write_content(content, ctx);
        impl::write_fragmented(os, ctx, content.view(), id, *fragment);
        return;
    }
    Octet::serialize(os, ctx, id);
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(length));
    write_content(os, ctx);
}

bool IEEE802_11_Element_Base::operator==(const IEEE802_11_Element_Base& other) const {
    return typeid(*this) == typeid(other) && get_type() == other.get_type() &&
           get_extension_type() == other.get_extension_type() && equal_fields(other);
}

void IEEE802_11_Element_Base::check_fields() const {
    if (get_length() - 2 > (fragment_id() ? impl::longest_frame : impl::max_content)) {
        throw SerializationException("Invalid length");
    }
}

void IEEE802_11_Element_Base::check_id(std::uint8_t /*id*/) const {}

void IEEE802_11_Element_Base::check_length(std::uint8_t /*length*/) const {}

void IEEE802_11_Element_Base::check_extension(std::uint8_t /*extension*/) const {}

void IEEE802_11_Element_Base::assign_fields(IEEE802_11_FieldSource& source) {
    source.fail("this element cannot be made from its fields");
}

void IEEE802_11_Element_Base::read_body(impl::ByteCursor& /*body*/, SerializationContext& /*ctx*/) {
    throw std::logic_error("This element is read from streams only");
}

}  // namespace nuv::ieee802_11
