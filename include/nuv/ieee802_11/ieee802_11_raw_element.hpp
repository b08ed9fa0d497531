// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// The octets of a body. Short ones lie inside the object.
using IEEE802_11_Body = SmallVector<std::uint8_t, 32>;

/// A typed element whose body is kept as it came, octet by octet.
template <IEEE802_11_Element_ID ID,
          IEEE802_11_Element_ID_Extension ExtID = IEEE802_11_Element_ID_Extension::NO_EXTENSION>
class NUV_EXPORT IEEE802_11_RawElement : public IEEE802_11_Element<ID, ExtID> {
public:
    const IEEE802_11_Body& get_body() const { return body_; }
    /// A body longer than an element holds (255 octets, 254 behind an extension octet) is refused
    /// on writing with "Invalid length".
    void set_body(const IEEE802_11_Body& body) { body_ = body; }

    std::uint32_t get_length() const override {
        return this->HEADER_LENGTH + static_cast<std::uint32_t>(body_.size());
    }
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;

protected:
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    IEEE802_11_Body body_;
};

}  // namespace nuv::ieee802_11
