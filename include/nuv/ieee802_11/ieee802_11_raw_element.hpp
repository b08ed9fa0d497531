// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>

#include "nuv/ieee802_11/ieee802_11_bits.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// The octets of a body. Short ones lie inside the object.
using IEEE802_11_Body = SmallVector<std::uint8_t, 32>;

/// A typed element whose body is kept as it came, octet by octet. A class may give names to bits of
/// it: they are read and set in the body, which may be shorter or longer than they need.
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
    /// By their names if the body is as long as these reach, else as octets.
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;

protected:
    using Names = std::span<const IEEE802_11_Bits>;

    /// What stands in the body, in wire order; nothing for a body of which no more is known.
    virtual Names names() const { return {}; }

    /// Absent if the body ends before.
    template <class T = std::uint8_t>
    std::optional<T> get(const IEEE802_11_Bits& bits) const {
        return bits.octet < body_.size()
                   ? std::optional(static_cast<T>(bits.get(body_[bits.octet])))
                   : std::nullopt;
    }
    /// A body that ends before is filled up with zeros.
    template <class T>
    void set(const IEEE802_11_Bits& bits, T value) {
        while (body_.size() <= bits.octet) {
            body_.push_back(0);
        }
        bits.set(body_[bits.octet], static_cast<std::uint8_t>(value));
    }

    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    std::size_t named_octets() const { return names().back().octet + std::size_t{1}; }

    IEEE802_11_Body body_;
};

}  // namespace nuv::ieee802_11
