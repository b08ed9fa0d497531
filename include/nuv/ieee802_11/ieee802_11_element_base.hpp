// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <ios>
#include <optional>
#include <span>

#include "nuv/binary_serializable.hpp"
#include "nuv/export.hpp"
#include "nuv/ieee802_11/ieee802_11_element_id.hpp"

namespace nuv::impl {
class ByteCursor;
}

namespace nuv::ieee802_11 {

class IEEE802_11_FieldSource;
class IEEE802_11_FieldVisitor;

/// An information element (IEEE Std 802.11-2020, 9.4.2.1): Element ID (1 octet), Length (1 octet:
/// how many follow), Element ID Extension (1 octet, only for ID 255, counted by Length), body.
///
/// Reading takes what comes as the element it is read into: the caller has looked at the ID and
/// made an object of the class. A failed read throws SerializationException and may leave the
/// fields partly replaced. Whether it succeeds or fails inside the body, the stream then stands
/// behind the element, as far as it reaches. A stream without positions, as a pipe's, is refused with
/// std::logic_error.
///
/// A class may say that its elements can be continued by Fragment elements (IEEE Std 802.11-2020,
/// 9.4.2.188, 10.28.11): they are then read as one, and written with as many as are needed.
class NUV_EXPORT IEEE802_11_Element_Base : public serialization::BinarySerializable {
public:
    /// Writes the whole element. Throws SerializationException, writing nothing, if the fields do
    /// not fit an element.
    void serialize_impl(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;

    /// True only for elements whose content is not kept (IEEE802_11_DummyElement).
    virtual bool is_dummy() const { return false; }
    /// Octets of the whole element, header included.
    virtual std::uint32_t get_length() const = 0;
    virtual IEEE802_11_Element_ID get_type() const = 0;
    virtual IEEE802_11_Element_ID_Extension get_extension_type() const = 0;
    /// Same ID, same extension and equal fields. Deliberate: a typed element never equals a raw
    /// one, nor one of a class that is derived from its own.
    virtual bool operator==(const IEEE802_11_Element_Base& other) const;

    /// Reads the element that begins at the first of `bytes`: as deserialize_impl from a stream
    /// over them, many times faster. Returns the state in which such a stream would be left:
    /// failbit says that the element's Length runs past the end of `bytes`, though every field was
    /// there.
    std::ios_base::iostate deserialize(std::span<const std::uint8_t> bytes,
                                       serialization::SerializationContext& ctx);

    /// Shows every field to `visitor`.
    virtual void visit_fields(IEEE802_11_FieldVisitor& visitor) const = 0;

    /// Reads from the library's own source of octets, as the two above do.
    virtual void deserialize_from(impl::ByteCursor& source,
                                  serialization::SerializationContext& ctx);

    /// Takes every field from `source`, as visit_fields() shows them. Throws what the source throws,
    /// and may leave the fields partly replaced then. What cannot be written is refused on writing.
    virtual void assign_fields(IEEE802_11_FieldSource& source);

    /// Throws the SerializationException with which serialize_impl() refuses the fields: "Invalid
    /// length" for more than 255 octets behind the Length octet, unless they can be continued.
    virtual void check_fields() const;

protected:
    IEEE802_11_Element_Base() = default;
    IEEE802_11_Element_Base(const IEEE802_11_Element_Base&) = default;
    IEEE802_11_Element_Base(IEEE802_11_Element_Base&&) = default;
    IEEE802_11_Element_Base& operator=(const IEEE802_11_Element_Base&) = default;
    IEEE802_11_Element_Base& operator=(IEEE802_11_Element_Base&&) = default;

    /// Each throws what forbids to read an element with this octet in its header.
    virtual void check_id(std::uint8_t id) const;
    virtual void check_length(std::uint8_t length) const;
    virtual void check_extension(std::uint8_t extension) const;
    /// The body, without the extension octet.
    virtual void write_body(std::ostream& os, serialization::SerializationContext& ctx) const = 0;
    /// Throws std::logic_error; a class overrides this, or both ways to read.
    virtual void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx);
    /// `other` is of the same class and has the same ID and extension.
    virtual bool equal_fields(const IEEE802_11_Element_Base& other) const = 0;
    /// The ID of what continues an element of 255 octets; none for a class that is never continued.
    virtual std::optional<std::uint8_t> fragment_id() const { return std::nullopt; }

private:
    template <class Source>
    void read_from(Source& source, serialization::SerializationContext& ctx);
    void read_content(impl::ByteCursor& content, serialization::SerializationContext& ctx);
    void write_content(std::ostream& os, serialization::SerializationContext& ctx) const;
};

}  // namespace nuv::ieee802_11
