// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <ios>
#include <iosfwd>
#include <span>

#include "nuv/binary_serializable.hpp"
#include "nuv/export.hpp"
#include "nuv/ieee802_11_codes.hpp"

namespace nuv::impl {
class ByteCursor;
}

namespace nuv::ieee802_11 {

class IEEE802_11_FieldSource;
class IEEE802_11_FieldVisitor;

/// What a Measurement Report element carries behind its type (IEEE Std 802.11-2020, 9.4.2.21): one
/// class for each type that the library interprets. It has no header of its own; how far it may read
/// is said by its max-consume-length.
class NUV_EXPORT IEEE802_11_MeasurementReportFieldBase : public serialization::BinarySerializable {
public:
    /// How many octets the field may read. No part of its value: it is not compared.
    std::uint8_t get_max_consume_length() const { return max_consume_length_; }
    void set_max_consume_length(std::uint8_t length) { max_consume_length_ = length; }

    /// Octets of the field.
    virtual std::uint32_t get_length() const = 0;
    virtual MeasurementType get_measurement_type() const = 0;
    /// Same class and equal fields.
    virtual bool operator==(const IEEE802_11_MeasurementReportFieldBase& other) const;
    /// Writes the text form, for people. The stream's width, fill and flags neither matter nor
    /// change.
    virtual void serialize_string_impl(std::ostream& os) const;

    /// Reads the field that begins at the first of `bytes`: as deserialize_impl from a stream over
    /// them. Returns the state in which such a stream would be left.
    std::ios_base::iostate deserialize(std::span<const std::uint8_t> bytes,
                                       serialization::SerializationContext& ctx);

    /// Shows every field to `visitor`.
    virtual void visit_fields(IEEE802_11_FieldVisitor& visitor) const = 0;

    /// Reads from the library's own source of octets.
    virtual void deserialize_from(impl::ByteCursor& source,
                                  serialization::SerializationContext& ctx) = 0;

    /// Takes every field from `source`, as visit_fields() shows them. Throws what the source throws.
    virtual void assign_fields(IEEE802_11_FieldSource& source) = 0;

    /// Throws the SerializationException with which serialize_impl() refuses the field; a report
    /// asks before it writes its first octet. Nothing is refused by default.
    virtual void check_fields() const {}

protected:
    explicit IEEE802_11_MeasurementReportFieldBase(std::uint8_t max_consume_length)
        : max_consume_length_(max_consume_length) {}
    // A report owns its subelements: it is moved, not copied.
    IEEE802_11_MeasurementReportFieldBase(IEEE802_11_MeasurementReportFieldBase&&) = default;
    IEEE802_11_MeasurementReportFieldBase& operator=(IEEE802_11_MeasurementReportFieldBase&&) =
        default;

    /// `other` is of the same class.
    virtual bool equal_fields(const IEEE802_11_MeasurementReportFieldBase& other) const = 0;

private:
    std::uint8_t max_consume_length_;
};

/// Writes the text form.
NUV_EXPORT std::ostream& operator<<(std::ostream& os,
                                    const IEEE802_11_MeasurementReportFieldBase& field);

}  // namespace nuv::ieee802_11
