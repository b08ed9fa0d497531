// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_measurement_report.hpp"

#include <ostream>
#include <stdexcept>
#include <string_view>

#include "internal/classic_stream.hpp"
#include "internal/ieee802_11/element_layout.hpp"
#include "nuv/ieee802_11/ieee802_11_beacon_report.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;
using serialization::SerializationException;

namespace {

constexpr std::string_view field_name = "measurement_report_field";

}  // namespace

/// | offset | size | field                    | clause                                           |
/// |--------|------|--------------------------|--------------------------------------------------|
/// | 2      | 1    | measurement token        | 9.4.2.21                                         |
/// | 3      | 1    | measurement report mode  | 9.4.2.21: bit 0 late, 1 incapable, 2 refused     |
/// | 4      | 1    | measurement type         | 9.4.2.21                                         |
/// | 5      |      | measurement report field | 9.4.2.21, without a mode bit set                 |
struct IEEE802_11_MeasurementReport::Layout {
    using E = IEEE802_11_MeasurementReport;
    using Type = layout::Always<"measurement_type", &E::measurement_type_>;
    using TokenAndMode =
        layout::Fields<layout::Always<"measurement_token", &E::measurement_token_>,
                       layout::Always<"measurement_report_mode", &E::measurement_report_mode_>>;
    using fields = layout::Fields<TokenAndMode, Type>;
    static constexpr std::uint32_t fixed_length = TokenAndMode::fixed_length + Type::size;
    static_assert(fixed_length == 3);

    static bool has_report(const E& e) {
        const Mode no_report_bits(7);
        return (e.measurement_report_mode_ & no_report_bits).none();
    }
};

IEEE802_11_MeasurementReport::IEEE802_11_MeasurementReport(std::uint8_t token, const Mode& mode,
                                                           MeasurementType type, FieldPtr field)
    : measurement_token_(token),
      measurement_report_mode_(mode),
      measurement_type_(type),
      measurement_report_field_(std::move(field)) {
    if (measurement_report_field_ != nullptr &&
        measurement_report_field_->get_measurement_type() != type) {
        throw std::invalid_argument("Construct measurement report with type mismatch");
    }
}

void IEEE802_11_MeasurementReport::set_measurement_report_mode(const Mode& mode) {
    if (mode.count() > 1) {
        throw std::invalid_argument("More than one Measurement Report Mode Bit set in argument");
    }
    measurement_report_mode_ = mode;
}

void IEEE802_11_MeasurementReport::set_measurement_type(MeasurementType type) {
    if (type > MeasurementType::FINE_TIMING_MEASUREMENT_RANGE &&
        type != MeasurementType::MEASUREMENT_PAUSE) {
        throw std::invalid_argument("Invalid Measurement Type value");
    }
    measurement_type_ = type;
}

void IEEE802_11_MeasurementReport::set_measurement_report_field(FieldPtr field) {
    if (field != nullptr && field->get_measurement_type() != measurement_type_) {
        throw std::invalid_argument(
            "Mismatch between measurement type in argument and field value in *this");
    }
    measurement_report_field_ = std::move(field);
}

bool IEEE802_11_MeasurementReport::create_measurement_report_field(
    MeasurementType type, std::uint8_t max_consume_length) {
    if (type != MeasurementType::BEACON) {
        return false;
    }
    measurement_report_field_ = std::make_shared<IEEE802_11_BeaconReport>(max_consume_length);
    return true;
}

std::uint32_t IEEE802_11_MeasurementReport::get_length() const {
    const std::uint32_t field =
        measurement_report_field_ != nullptr ? measurement_report_field_->get_length() : 0;
    return static_cast<std::uint8_t>(HEADER_LENGTH + Layout::fixed_length + field);
}

// Deliberate: the whole is never too long, the Length octet wraps as get_length() does.
void IEEE802_11_MeasurementReport::check_fields() const {
    if (measurement_report_field_ != nullptr) {
        measurement_report_field_->check_fields();
    }
}

void IEEE802_11_MeasurementReport::check_id(std::uint8_t id) const {
    if (id != static_cast<std::uint8_t>(ELEMENT_ID)) {
        throw SerializationException("Invalid ID");
    }
}

void IEEE802_11_MeasurementReport::write_body(std::ostream& os, SerializationContext& ctx) const {
    Layout::fields::write(*this, os, ctx);
    if (measurement_report_field_ != nullptr) {
        measurement_report_field_->serialize_impl(os, ctx);
    }
}

void IEEE802_11_MeasurementReport::read_body(impl::ByteCursor& body, SerializationContext& ctx) {
    const std::size_t length = body.remaining();
    measurement_report_field_.reset();
    Layout::TokenAndMode::read(*this, body);
    if (length < Layout::fixed_length) {
        throw SerializationException("Invalid length");
    }
    Layout::Type::read(*this, body);
    if (!Layout::has_report(*this)) {
        if (length != Layout::fixed_length) {
            throw SerializationException("Invalid length: no measurement report allowed");
        }
    } else if (create_measurement_report_field(
                   measurement_type_, static_cast<std::uint8_t>(length - Layout::fixed_length))) {
        measurement_report_field_->deserialize_from(body, ctx);
    }
}

bool IEEE802_11_MeasurementReport::equal_fields(const IEEE802_11_Element_Base& other) const {
    const auto& report = static_cast<const IEEE802_11_MeasurementReport&>(other);
    const FieldPtr& a = measurement_report_field_;
    const FieldPtr& b = report.measurement_report_field_;
    return Layout::fields::equal(*this, report) &&
           (a == nullptr || b == nullptr ? a == b : *a == *b);
}

void IEEE802_11_MeasurementReport::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    Layout::fields::visit(*this, visitor);
    if (measurement_report_field_ != nullptr) {
        visitor.open_object(field_name);
        measurement_report_field_->visit_fields(visitor);
        visitor.close_object();
    }
}

void IEEE802_11_MeasurementReport::assign_fields(IEEE802_11_FieldSource& source) {
    Layout::fields::assign(*this, source);
    measurement_report_field_.reset();
    const bool required =
        Layout::has_report(*this) && create_measurement_report_field(measurement_type_, 0);
    if (required || source.has(field_name)) {
        source.open_object(field_name);
        if (!required) {
            source.fail("only beacon reports have one, without a mode bit set");
        }
        measurement_report_field_->assign_fields(source);
        source.close_object();
    }
}

std::ostream& operator<<(std::ostream& os, const IEEE802_11_MeasurementReport& report) {
    impl::ClassicStream text;
    text << +static_cast<std::uint8_t>(report.get_type()) << " (id)\n"
         << report.get_length() << " (length incl. ID and length field)\n"
         << +report.get_measurement_token() << " (token)\n"
         << report.get_measurement_report_mode() << " (mode)\n"
         << report.get_measurement_type() << " (type field)\n";
    const auto& field = report.get_measurement_report_field();
    field != nullptr ? text << *field << " (report)" : text << "empty";
    return impl::write_text(os, text.view());
}

}  // namespace nuv::ieee802_11
