// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element_base.hpp"

namespace nuv::ieee802_11 {

/// An element that is passed over: its ID, its extension and the size of its body are kept, the
/// body is not, and is written as zeros (deliberate: what nobody interprets takes no memory).
///
/// Two of them are equal if those three are. Reading throws "Invalid type" for another ID than the
/// object's, "Invalid length: must fit an OUI" for a vendor-specific element of less than 3 octets
/// and for an ID 255 without room for the extension octet, "Seek failed" where the stream ends
/// inside the body. Writing throws "Invalid length: must fit an OUI" for every size that does not
/// fit.
class NUV_EXPORT IEEE802_11_DummyElement : public IEEE802_11_Element_Base {
public:
    explicit IEEE802_11_DummyElement(IEEE802_11_Element_ID id) : id_(id) {}
    /// Octets of the body, without the extension octet.
    IEEE802_11_DummyElement(IEEE802_11_Element_ID id, std::uint16_t body_length)
        : id_(id), body_length_(body_length) {}

    void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;
    bool is_dummy() const override { return true; }
    std::uint32_t get_length() const override;
    IEEE802_11_Element_ID get_type() const override { return id_; }
    /// NO_EXTENSION until an element with ID 255 was read.
    IEEE802_11_Element_ID_Extension get_extension_type() const override { return extension_; }
    /// Shows nothing: the content is not kept.
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void deserialize_from(impl::ByteCursor& source,
                          serialization::SerializationContext& ctx) override;
    void check_fields() const override;

protected:
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    template <class Source>
    void read_from(Source& source, serialization::SerializationContext& ctx);
    bool is_extended() const { return id_ == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION; }

    IEEE802_11_Element_ID id_;
    IEEE802_11_Element_ID_Extension extension_ = IEEE802_11_Element_ID_Extension::NO_EXTENSION;
    std::uint16_t body_length_ = 0;
};

}  // namespace nuv::ieee802_11
