// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_beacon_report.hpp"

#include <array>
#include <istream>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>

#include "internal/classic_stream.hpp"
#include "internal/ieee802_11/element_layout.hpp"
#include "internal/log_module.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;
using serialization::SerializationException;

namespace {

// The name is misspelled; collectors match it.
constinit impl::LogModule log_module{"becon_report",
                                     "src/shared/ieee802_11/ieee802_11_beacon_report"};

constexpr std::uint32_t header_length = 2;

/// What is there of the next `room.size()` octets.
std::span<const std::uint8_t> take(std::istream& source, std::span<std::uint8_t> room) {
    return room.first(impl::read_available(source, room.data(), room.size()));
}
std::span<const std::uint8_t> take(impl::ByteCursor& source, std::span<std::uint8_t> room) {
    return source.read_octets(room.size());
}

}  // namespace

/// | offset | size | field                         | clause                                      |
/// |--------|------|-------------------------------|---------------------------------------------|
/// | 0      | 1    | operating class               | 9.4.2.21.7                                  |
/// | 1      | 1    | channel number                | 9.4.2.21.7                                  |
/// | 2      | 8    | actual measurement start time | 9.4.2.21.7; deliberate: the integers are    |
/// | 10     | 2    | measurement duration          | most significant octet first, the standard  |
/// |        |      |                               | orders the octets the other way             |
/// | 12     | 1    | reported frame information    | 9.4.2.21.7                                  |
/// | 13     | 1    | RCPI                          | 9.4.2.38                                    |
/// | 14     | 1    | RSNI                          | 9.4.2.40                                    |
/// | 15     | 6    | BSSID                         | 9.4.2.21.7                                  |
/// | 21     | 1    | antenna ID                    | 9.4.2.39                                    |
/// | 22     | 4    | parent TSF                    | 9.4.2.21.7; deliberate: as the times        |
/// | 26     |      | subelements                   | 9.4.2.21.7: 1, 163, any number of 221       |
struct IEEE802_11_BeaconReport::Layout {
    using E = IEEE802_11_BeaconReport;
    using fields = layout::Fields<
        layout::Always<"operating_class", &E::operating_class_>,
        layout::Always<"channel_number", &E::channel_number_>,
        layout::Always<"actual_measurement_start_time", &E::actual_measurement_start_time_>,
        layout::Always<"measurement_duration", &E::measurement_duration_>,
        layout::Always<"reported_frame_information", &E::reported_frame_information_>,
        layout::Always<"rcpi", &E::rcpi_>, layout::Always<"rsni", &E::rsni_>,
        layout::Always<"bssid", &E::bssid_>, layout::Always<"antenna_id", &E::antenna_id_>,
        layout::Always<"parent_tsf", &E::parent_tsf_>>;
    static_assert(fields::fixed_length == 26);

    /// Calls `function` with ID and size of each subelement, in wire order.
    template <class Function>
    static void for_each_subelement(const E& e, Function function) {
        if (e.reported_frame_body_) {
            function(REPORTED_FRAME_BODY_ID, *e.reported_frame_body_);
        }
        if (e.wide_bandwidth_channel_switch_) {
            function(WIDE_BANDWIDTH_CHANNEL_SWITCH_ID, *e.wide_bandwidth_channel_switch_);
        }
        for (const Size size : e.vendor_specific_) {
            function(VENDOR_SPECIFIC_ID, size);
        }
    }
};

IEEE802_11_BeaconReport::IEEE802_11_BeaconReport(
    std::uint8_t operating_class, std::uint8_t channel_number,
    std::uint64_t actual_measurement_start_time, std::uint16_t measurement_duration,
    const std::bitset<8>& reported_frame_information, std::uint8_t rcpi, std::uint8_t rsni,
    const MACAddress& bssid, std::uint8_t antenna_id, std::uint32_t parent_tsf)
    : IEEE802_11_MeasurementReportFieldBase(0),
      operating_class_(operating_class),
      channel_number_(channel_number),
      actual_measurement_start_time_(actual_measurement_start_time),
      measurement_duration_(measurement_duration),
      reported_frame_information_(reported_frame_information),
      rcpi_(rcpi),
      rsni_(rsni),
      bssid_(bssid),
      antenna_id_(antenna_id),
      parent_tsf_(parent_tsf) {}

IEEE802_11_BeaconReport::Size IEEE802_11_BeaconReport::size_of(
    const IEEE802_11_DummyElement& subelement) {
    return static_cast<Size>(subelement.get_length() - header_length);
}

IEEE802_11_BeaconReport::OptionalSize IEEE802_11_BeaconReport::size_of(
    const SubElement& subelement) {
    return subelement ? OptionalSize(size_of(*subelement)) : std::nullopt;
}

IEEE802_11_BeaconReport::SubElement IEEE802_11_BeaconReport::make_subelement(
    IEEE802_11_Element_ID id, OptionalSize size) {
    return size ? SubElement(std::in_place, id, *size) : std::nullopt;
}

IEEE802_11_BeaconReport::VendorElements IEEE802_11_BeaconReport::get_vendor_specific() const {
    VendorElements subelements;
    subelements.reserve(vendor_specific_.size());
    for (const Size size : vendor_specific_) {
        subelements.emplace_back(VENDOR_SPECIFIC_ID, size);
    }
    return subelements;
}

void IEEE802_11_BeaconReport::set_vendor_specific(const VendorElements& subelements) {
    if (subelements.size() > MAX_VENDOR_ELEMENTS) {
        throw std::invalid_argument("A beacon report has at most " +
                                    std::to_string(MAX_VENDOR_ELEMENTS) + " vendor elements");
    }
    vendor_specific_.clear();
    for (const IEEE802_11_DummyElement& subelement : subelements) {
        vendor_specific_.push_back(size_of(subelement));
    }
}

std::uint32_t IEEE802_11_BeaconReport::get_length() const {
    std::uint32_t length = Layout::fields::fixed_length;
    Layout::for_each_subelement(
        *this, [&](IEEE802_11_Element_ID, Size size) { length += header_length + size; });
    return length;
}

void IEEE802_11_BeaconReport::check_fields() const {
    Layout::for_each_subelement(*this, [](IEEE802_11_Element_ID id, Size size) {
        IEEE802_11_DummyElement(id, size).check_fields();
    });
}

void IEEE802_11_BeaconReport::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    check_fields();
    Layout::fields::write(*this, os, ctx);
    Layout::for_each_subelement(*this, [&](IEEE802_11_Element_ID id, Size size) {
        IEEE802_11_DummyElement(id, size).serialize_impl(os, ctx);
    });
}

void IEEE802_11_BeaconReport::clear_subelements() {
    reported_frame_body_.reset();
    wide_bandwidth_channel_switch_.reset();
    vendor_specific_.clear();
}

template <class Source>
void IEEE802_11_BeaconReport::read_from(Source& source, SerializationContext& ctx) {
    clear_subelements();
    std::array<std::uint8_t, Layout::fields::fixed_length> room{};
    impl::ByteCursor fixed(take(source, room));
    Layout::fields::read(*this, fixed);

    std::uint32_t length = Layout::fields::fixed_length;
    const std::uint32_t limit = get_max_consume_length();
    if (length >= limit) {
        return;
    }
    const auto next_id = [&source] {
        return static_cast<IEEE802_11_Element_ID>(impl::peek(source));
    };
    const auto read_subelement = [&](IEEE802_11_Element_ID id, const char* name) {
        IEEE802_11_DummyElement subelement(id);
        impl::read_value(source, ctx, subelement);
        length += subelement.get_length();
        if (length > limit) {
            throw SerializationException(std::string("Invalid length after consuming ") + name);
        }
        return size_of(subelement);
    };

    auto id = next_id();
    if (id == REPORTED_FRAME_BODY_ID) {
        reported_frame_body_ = read_subelement(id, "reported_frame_body");
        if (length == limit) {
            return;
        }
        id = next_id();
    }
    if (id == WIDE_BANDWIDTH_CHANNEL_SWITCH_ID) {
        wide_bandwidth_channel_switch_ = read_subelement(id, "wide_bandwidth_chan_switch");
        if (length == limit) {
            return;
        }
        id = next_id();
    }
    for (; id == VENDOR_SPECIFIC_ID && length < limit; id = next_id()) {
        if (vendor_specific_.size() == MAX_VENDOR_ELEMENTS) {
            NUV_LOG(log_module, error) << "Number of Vendor Elements exceeds limit of "
                                       << MAX_VENDOR_ELEMENTS << ". Failing deserialize!";
            throw SerializationException("Number of vendor elements exceeds secure limit!");
        }
        vendor_specific_.push_back(read_subelement(id, "vendor_specific"));
    }
}

void IEEE802_11_BeaconReport::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

void IEEE802_11_BeaconReport::deserialize_from(impl::ByteCursor& source,
                                               SerializationContext& ctx) {
    read_from(source, ctx);
}

bool IEEE802_11_BeaconReport::equal_fields(
    const IEEE802_11_MeasurementReportFieldBase& other) const {
    const auto& report = static_cast<const IEEE802_11_BeaconReport&>(other);
    return Layout::fields::equal(*this, report) &&
           reported_frame_body_ == report.reported_frame_body_ &&
           wide_bandwidth_channel_switch_ == report.wide_bandwidth_channel_switch_ &&
           vendor_specific_ == report.vendor_specific_;
}

void IEEE802_11_BeaconReport::serialize_string_impl(std::ostream& os) const {
    impl::ClassicStream text;
    IEEE802_11_MeasurementReportFieldBase::serialize_string_impl(text);
    text << '\n'
         << +operating_class_ << " (operating class)\n"
         << +channel_number_ << " (channel number)\n"
         << actual_measurement_start_time_ << " (measurement start time)\n"
         << measurement_duration_ << " (measurement_duration)\n"
         << reported_frame_information_ << " (reported frame information)\n"
         << +rcpi_ << " (RCPI)\n"
         << +rsni_ << " (RSNI)\n"
         << bssid_ << " (BSSID)\n"
         << +antenna_id_ << " (antenna ID)\n"
         << parent_tsf_ << " (parent TSF)\n";
    if (reported_frame_body_) {
        text << "included (reported frame body)\n";
    }
    if (wide_bandwidth_channel_switch_) {
        text << "included (wide bandwith channel switch)\n";  // misspelt; readers match it
    }
    text << vendor_specific_.size() << " (vendor elements)\n";
    impl::write_text(os, text.view());
}

void IEEE802_11_BeaconReport::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    Layout::fields::visit(*this, visitor);
    visitor.open_list("subelements");
    Layout::for_each_subelement(*this, [&](IEEE802_11_Element_ID id, Size size) {
        visitor.open_object({});
        visitor.number("id", static_cast<std::uint8_t>(id));
        visitor.text("name", id == REPORTED_FRAME_BODY_ID ? "Reported Frame Body"
                             : id == WIDE_BANDWIDTH_CHANNEL_SWITCH_ID
                                 ? "Wide Bandwidth Channel Switch"
                                 : "Vendor Specific");
        visitor.number("length", size);
        visitor.close_object();
    });
    visitor.close_list();
}

void IEEE802_11_BeaconReport::assign_fields(IEEE802_11_FieldSource& source) {
    Layout::fields::assign(*this, source);
    clear_subelements();
    for (std::size_t count = source.open_list("subelements"); count > 0; --count) {
        source.open_object({});
        const auto id = static_cast<IEEE802_11_Element_ID>(source.number("id", 8));
        layout::skip_meaning(source, "name");
        const auto size = static_cast<Size>(source.number("length", 8));
        const bool before_vendors = vendor_specific_.empty();
        if (id == VENDOR_SPECIFIC_ID && vendor_specific_.size() < MAX_VENDOR_ELEMENTS) {
            vendor_specific_.push_back(size);
        } else if (id == REPORTED_FRAME_BODY_ID && !reported_frame_body_ &&
                   !wide_bandwidth_channel_switch_ && before_vendors) {
            reported_frame_body_ = size;
        } else if (id == WIDE_BANDWIDTH_CHANNEL_SWITCH_ID && !wide_bandwidth_channel_switch_ &&
                   before_vendors) {
            wide_bandwidth_channel_switch_ = size;
        } else {
            source.fail("a beacon report has 1, 163 and up to ten 221, in this order");
        }
        source.close_object();
    }
    source.close_list();
}

}  // namespace nuv::ieee802_11
