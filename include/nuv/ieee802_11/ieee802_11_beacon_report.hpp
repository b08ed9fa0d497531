// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "nuv/byte_order.hpp"
#include "nuv/ieee802_11/ieee802_11_dummy_element.hpp"
#include "nuv/ieee802_11/ieee802_11_measurement_report_field_base.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Beacon report (measurement type 5; IEEE Std 802.11-2020, 9.4.2.21.7): how a station hears one
/// BSS.
///
/// Deliberate: the times and the parent TSF are most significant octet first here, both ends of this
/// system agree on it. The standard orders the octets the other way; the accessors with the suffix
/// `_standard` give what it means.
///
/// Subelements are raw elements, of which only the sizes are kept; they are read in the order
/// reported frame body, wide bandwidth channel switch, vendor-specific ones, up to the first that is
/// out of order or unknown. The fixed fields are read whatever the max-consume-length is.
///
/// Reading throws "Invalid length after consuming …" where a subelement ends beyond the
/// max-consume-length, "Number of vendor elements exceeds secure limit!", which is logged, for more
/// than MAX_VENDOR_ELEMENTS, and what IEEE802_11_DummyElement throws.
class NUV_EXPORT IEEE802_11_BeaconReport : public IEEE802_11_MeasurementReportFieldBase {
public:
    static constexpr std::size_t MAX_VENDOR_ELEMENTS = 10;
    /// Subelement IDs.
    static constexpr auto REPORTED_FRAME_BODY_ID = IEEE802_11_Element_ID{1};
    static constexpr auto WIDE_BANDWIDTH_CHANNEL_SWITCH_ID = IEEE802_11_Element_ID{163};
    static constexpr auto VENDOR_SPECIFIC_ID = IEEE802_11_Element_ID::VENDOR_SPECIFIC;

    using SubElement = std::optional<IEEE802_11_DummyElement>;
    using VendorElements = std::vector<IEEE802_11_DummyElement>;

    explicit IEEE802_11_BeaconReport(std::uint8_t max_consume_length)
        : IEEE802_11_MeasurementReportFieldBase(max_consume_length) {}
    /// The max-consume-length is 0: the fixed fields alone.
    IEEE802_11_BeaconReport(std::uint8_t operating_class, std::uint8_t channel_number,
                            std::uint64_t actual_measurement_start_time,
                            std::uint16_t measurement_duration,
                            const std::bitset<8>& reported_frame_information, std::uint8_t rcpi,
                            std::uint8_t rsni, const MACAddress& bssid, std::uint8_t antenna_id,
                            std::uint32_t parent_tsf);

    std::uint8_t get_operating_class() const { return operating_class_; }
    void set_operating_class(std::uint8_t operating_class) { operating_class_ = operating_class; }

    std::uint8_t get_channel_number() const { return channel_number_; }
    void set_channel_number(std::uint8_t channel) { channel_number_ = channel; }

    /// TSF timer of the measuring station, as sent: most significant octet first.
    std::uint64_t get_actual_measurement_start_time() const {
        return actual_measurement_start_time_;
    }
    void set_actual_measurement_start_time(std::uint64_t time) {
        actual_measurement_start_time_ = time;
    }
    /// In microseconds.
    std::uint64_t get_actual_measurement_start_time_standard() const {
        return swap_octets(actual_measurement_start_time_);
    }
    void set_actual_measurement_start_time_standard(std::uint64_t time) {
        actual_measurement_start_time_ = swap_octets(time);
    }

    /// As sent: most significant octet first.
    std::uint16_t get_measurement_duration() const { return measurement_duration_; }
    void set_measurement_duration(std::uint16_t duration) { measurement_duration_ = duration; }
    /// In time units of 1024 microseconds.
    std::uint16_t get_measurement_duration_standard() const {
        return swap_octets(measurement_duration_);
    }
    void set_measurement_duration_standard(std::uint16_t duration) {
        measurement_duration_ = swap_octets(duration);
    }

    /// Bits 0 to 6: condensed PHY type; bit 7: BeaconReportFrameType.
    const std::bitset<8>& get_reported_frame_information() const {
        return reported_frame_information_;
    }
    /// Misspelt; callers know it by this name.
    void set_reported_frame_informaiton(const std::bitset<8>& information) {
        reported_frame_information_ = information;
    }

    /// Received power: 2 x (dBm + 110); 255 says that there is none (9.4.2.38).
    std::uint8_t get_RCPI() const { return rcpi_; }
    void set_RCPI(std::uint8_t rcpi) { rcpi_ = rcpi; }

    /// Signal to noise: 2 x (dB + 10); 255 says that there is none (9.4.2.40).
    std::uint8_t get_RSNI() const { return rsni_; }
    void set_RSNI(std::uint8_t rsni) { rsni_ = rsni; }

    const MACAddress& get_BSSID() const { return bssid_; }
    void set_BSSID(const MACAddress& bssid) { bssid_ = bssid; }

    std::uint8_t get_antenna_ID() const { return antenna_id_; }
    void set_antenna_ID(std::uint8_t id) { antenna_id_ = id; }

    /// Low 4 octets of the measuring station's TSF timer when it heard the frame, as sent: most
    /// significant octet first.
    std::uint32_t get_parent_TSF() const { return parent_tsf_; }
    void set_parent_TSF(std::uint32_t tsf) { parent_tsf_ = tsf; }
    /// In microseconds.
    std::uint32_t get_parent_TSF_standard() const { return swap_octets(parent_tsf_); }
    void set_parent_TSF_standard(std::uint32_t tsf) { parent_tsf_ = swap_octets(tsf); }

    // Of the subelements that are set only the sizes count; their IDs are the ones above.
    SubElement get_reported_frame_body() const {
        return make_subelement(REPORTED_FRAME_BODY_ID, reported_frame_body_);
    }
    void set_reported_frame_body(const SubElement& subelement) {
        reported_frame_body_ = size_of(subelement);
    }

    SubElement get_wide_bandwidth_channel_switch() const {
        return make_subelement(WIDE_BANDWIDTH_CHANNEL_SWITCH_ID, wide_bandwidth_channel_switch_);
    }
    /// Its name lacks a word; callers know it by this one.
    void set_bandwidth_channel_switch(const SubElement& subelement) {
        wide_bandwidth_channel_switch_ = size_of(subelement);
    }

    VendorElements get_vendor_specific() const;
    /// Throws std::invalid_argument, with the ones before kept, for more than MAX_VENDOR_ELEMENTS.
    void set_vendor_specific(const VendorElements& subelements);

    void serialize_impl(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void deserialize_impl(std::istream& is, serialization::SerializationContext& ctx) override;
    std::uint32_t get_length() const override;
    MeasurementType get_measurement_type() const override { return MeasurementType::BEACON; }
    void serialize_string_impl(std::ostream& os) const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void deserialize_from(impl::ByteCursor& source,
                          serialization::SerializationContext& ctx) override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    void check_fields() const override;

protected:
    bool equal_fields(const IEEE802_11_MeasurementReportFieldBase& other) const override;

private:
    struct Layout;

    /// Octets of a subelement's body.
    using Size = std::uint16_t;
    using OptionalSize = std::optional<Size>;

    static Size size_of(const IEEE802_11_DummyElement& subelement);
    static OptionalSize size_of(const SubElement& subelement);
    static SubElement make_subelement(IEEE802_11_Element_ID id, OptionalSize size);
    void clear_subelements();
    template <class Source>
    void read_from(Source& source, serialization::SerializationContext& ctx);

    std::uint8_t operating_class_ = 0;
    std::uint8_t channel_number_ = 0;
    std::uint64_t actual_measurement_start_time_ = 0;
    std::uint16_t measurement_duration_ = 0;
    std::bitset<8> reported_frame_information_;
    std::uint8_t rcpi_ = 0;
    std::uint8_t rsni_ = 0;
    MACAddress bssid_;
    std::uint8_t antenna_id_ = 0;
    std::uint32_t parent_tsf_ = 0;
    OptionalSize reported_frame_body_;
    OptionalSize wide_bandwidth_channel_switch_;
    SmallVector<Size, MAX_VENDOR_ELEMENTS> vendor_specific_;
};

}  // namespace nuv::ieee802_11
