// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_measurement_report_field_base.hpp"

#include <ostream>
#include <typeinfo>

#include "internal/byte_cursor.hpp"
#include "internal/classic_stream.hpp"

namespace nuv::ieee802_11 {

bool IEEE802_11_MeasurementReportFieldBase::operator==(
    const IEEE802_11_MeasurementReportFieldBase& other) const {
    return typeid(*this) == typeid(other) && equal_fields(other);
}

void IEEE802_11_MeasurementReportFieldBase::serialize_string_impl(std::ostream& os) const {
    impl::ClassicStream text;
    text << get_measurement_type() << " (type actual)\n"
         << get_length() << " (byte length)\n"
         << +max_consume_length_ << " (max-consume-length)";
    impl::write_text(os, text.view());
}

std::ios_base::iostate IEEE802_11_MeasurementReportFieldBase::deserialize(
    std::span<const std::uint8_t> bytes, serialization::SerializationContext& ctx) {
    impl::ByteCursor source(bytes);
    deserialize_from(source, ctx);
    return source.rdstate();
}

std::ostream& operator<<(std::ostream& os, const IEEE802_11_MeasurementReportFieldBase& field) {
    impl::ClassicStream text;
    field.serialize_string_impl(text);
    return impl::write_text(os, text.view());
}

}  // namespace nuv::ieee802_11
