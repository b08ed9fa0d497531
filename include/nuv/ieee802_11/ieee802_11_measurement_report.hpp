// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>
#include <iosfwd>
#include <memory>

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/ieee802_11/ieee802_11_measurement_report_field_base.hpp"

namespace nuv::ieee802_11 {

/// Measurement Report (ID 39; IEEE Std 802.11-2020, 9.4.2.21): what a station answers to a
/// measurement request. Of the types only the beacon report is interpreted; the report of another
/// type is passed over and not kept.
///
/// Reading throws "Invalid ID", "Invalid length" for a Length of 2 (of less, as an octet that is
/// missing), "Invalid length: no measurement report allowed" where a mode bit says that there is no
/// report and the Length says there is, and what the report's field throws.
class NUV_EXPORT IEEE802_11_MeasurementReport
    : public IEEE802_11_Element<IEEE802_11_Element_ID::MEASUREMENT_REPORT> {
public:
    using Mode = std::bitset<8>;
    using FieldPtr = std::shared_ptr<IEEE802_11_MeasurementReportFieldBase>;

    IEEE802_11_MeasurementReport() = default;
    /// Throws std::invalid_argument for a field of another type than `type`.
    IEEE802_11_MeasurementReport(std::uint8_t token, const Mode& mode, MeasurementType type,
                                 FieldPtr field);
    // A copy would share the field.
    IEEE802_11_MeasurementReport(IEEE802_11_MeasurementReport&&) = default;
    IEEE802_11_MeasurementReport& operator=(IEEE802_11_MeasurementReport&&) = default;

    /// The request's.
    std::uint8_t get_measurement_token() const { return measurement_token_; }
    void set_measurement_token(std::uint8_t token) { measurement_token_ = token; }

    /// Why there is no report: bit 0 late, bit 1 incapable, bit 2 refused.
    const Mode& get_measurement_report_mode() const { return measurement_report_mode_; }
    /// Throws std::invalid_argument for more than one bit, whichever they are.
    void set_measurement_report_mode(const Mode& mode);

    /// What was read may be any octet.
    MeasurementType get_measurement_type() const { return measurement_type_; }
    /// Throws std::invalid_argument for a type that the standard does not know. The field held is
    /// not looked at.
    void set_measurement_type(MeasurementType type);

    /// May be null.
    const FieldPtr& get_measurement_report_field() const { return measurement_report_field_; }
    /// Throws std::invalid_argument for a field of another type than the one held here.
    void set_measurement_report_field(FieldPtr field);

    /// Holds from now on an empty field of the class for `type`, which may read `max_consume_length`
    /// octets. False, and nothing changed, for a type without a class.
    bool create_measurement_report_field(MeasurementType type, std::uint8_t max_consume_length);

    /// Deliberate: kept in 8 bits. The Length octet, this minus 2, is the same as without.
    std::uint32_t get_length() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    void check_fields() const override;

protected:
    void check_id(std::uint8_t id) const override;
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    struct Layout;

    std::uint8_t measurement_token_ = 0;
    Mode measurement_report_mode_;
    MeasurementType measurement_type_ = MeasurementType::BASIC;
    FieldPtr measurement_report_field_;
};

/// Writes a text form, for people. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const IEEE802_11_MeasurementReport& report);

}  // namespace nuv::ieee802_11
