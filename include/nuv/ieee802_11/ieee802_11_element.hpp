// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element_base.hpp"

namespace nuv::ieee802_11 {

/// An element whose ID, and extension where the ID is 255, is fixed by its class.
template <IEEE802_11_Element_ID ID,
          IEEE802_11_Element_ID_Extension ExtID = IEEE802_11_Element_ID_Extension::NO_EXTENSION>
class IEEE802_11_Element : public IEEE802_11_Element_Base {
public:
    static constexpr IEEE802_11_Element_ID ELEMENT_ID = ID;
    static constexpr IEEE802_11_Element_ID_Extension EXTENSION_ID = ExtID;

    IEEE802_11_Element_ID get_type() const override { return ID; }
    IEEE802_11_Element_ID_Extension get_extension_type() const override { return ExtID; }

protected:
    /// Octets before the body.
    static constexpr std::uint32_t HEADER_LENGTH =
        ID == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION ? 3 : 2;
};

/// An element whose body follows from one list of fields: reading, writing, length, equality and
/// what a visitor is shown and a source is asked for. `Derived` declares `struct Layout;`, makes this class its friend, and
/// defines the list in its .cpp.
template <class Derived, IEEE802_11_Element_ID ID,
          IEEE802_11_Element_ID_Extension ExtID = IEEE802_11_Element_ID_Extension::NO_EXTENSION>
class NUV_EXPORT IEEE802_11_LayoutElement : public IEEE802_11_Element<ID, ExtID> {
public:
    std::uint32_t get_length() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    void check_fields() const override;

protected:
    void check_length(std::uint8_t length) const override;
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;
};

}  // namespace nuv::ieee802_11
