// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element_base.hpp"
#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// Multi-Link (ID 255, extension 107; IEEE Std 802.11be-2024, 9.4.2.322), its body kept as it came.
class NUV_EXPORT IEEE802_11_MultiLink : public IEEE802_11_Element_Base {
public:
    static constexpr auto ELEMENT_ID = IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION;
    static constexpr auto EXTENSION_ID = IEEE802_11_Element_ID_Extension::MULTI_LINK;

    const IEEE802_11_Body& get_body() const { return body_; }
    /// A body of more than 254 octets is refused on writing with "Invalid length".
    void set_body(const IEEE802_11_Body& body) { body_ = body; }

    std::uint32_t get_length() const override {
        return 3 + static_cast<std::uint32_t>(body_.size());
    }
    IEEE802_11_Element_ID get_type() const override { return ELEMENT_ID; }
    IEEE802_11_Element_ID_Extension get_extension_type() const override { return EXTENSION_ID; }
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;

protected:
    /// "Invalid ID" for another ID.
    void check_id(std::uint8_t id) const override;
    /// "Unexpected ID" for another extension.
    void check_extension(std::uint8_t extension) const override;
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    IEEE802_11_Body body_;
};

}  // namespace nuv::ieee802_11
