// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "internal/ieee802_11/element_layout.hpp"

/// What IEEE802_11_LayoutElement makes of a layout; for the .cpp of a class that has one.
namespace nuv::ieee802_11 {

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
std::uint32_t IEEE802_11_LayoutElement<Derived, ID, ExtID>::get_length() const {
    return this->HEADER_LENGTH +
           Derived::Layout::fields::length(static_cast<const Derived&>(*this));
}

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_LayoutElement<Derived, ID, ExtID>::visit_fields(
    IEEE802_11_FieldVisitor& visitor) const {
    Derived::Layout::fields::visit(static_cast<const Derived&>(*this), visitor);
}

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_LayoutElement<Derived, ID, ExtID>::assign_fields(IEEE802_11_FieldSource& source) {
    Derived::Layout::fields::assign(static_cast<Derived&>(*this), source);
}

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_LayoutElement<Derived, ID, ExtID>::check_fields() const {
    if constexpr (requires(const Derived& e) { Derived::Layout::check_fields(e); }) {
        Derived::Layout::check_fields(static_cast<const Derived&>(*this));
    }
    IEEE802_11_Element_Base::check_fields();
}

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_LayoutElement<Derived, ID, ExtID>::check_length(
    [[maybe_unused]] std::uint8_t length) const {
    if constexpr (requires { Derived::Layout::check_length(length); }) {
        Derived::Layout::check_length(length);
    }
}

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_LayoutElement<Derived, ID, ExtID>::write_body(
    std::ostream& os, serialization::SerializationContext& ctx) const {
    Derived::Layout::fields::write(static_cast<const Derived&>(*this), os, ctx);
}

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
void IEEE802_11_LayoutElement<Derived, ID, ExtID>::read_body(
    impl::ByteCursor& body, serialization::SerializationContext& /*ctx*/) {
    Derived::Layout::fields::read(static_cast<Derived&>(*this), body);
}

template <class Derived, IEEE802_11_Element_ID ID, IEEE802_11_Element_ID_Extension ExtID>
bool IEEE802_11_LayoutElement<Derived, ID, ExtID>::equal_fields(
    const IEEE802_11_Element_Base& other) const {
    return Derived::Layout::fields::equal(static_cast<const Derived&>(*this),
                                          static_cast<const Derived&>(other));
}

}  // namespace nuv::ieee802_11
