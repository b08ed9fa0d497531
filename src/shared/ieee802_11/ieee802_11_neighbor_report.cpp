// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_neighbor_report.hpp"

#include <algorithm>
#include <array>
#include <istream>
#include <limits>
#include <ostream>
#include <span>
#include <stdexcept>
#include <typeinfo>

#include "internal/classic_stream.hpp"
#include "internal/ieee802_11/element_layout.hpp"

namespace nuv::ieee802_11 {

using serialization::BinarySerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;

using Report = IEEE802_11_NeighborReport;
using SubID = IEEE802_11_NeigborReportSubelem_ID;
using Octet = BinarySerializableType<std::uint8_t>;

namespace {

constexpr std::uint32_t header_length = 2;

void write_header(std::ostream& os, SerializationContext& ctx, const Report::SubElementBase& sub) {
    sub.check_fields();
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(sub.get_type()));
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(sub.get_length() - header_length));
}

/// What a list of subelements holds: its users can put anything into it.
const Report::SubElementBase& required(const Report::SubElementPtr& sub) {
    if (sub == nullptr) {
        throw std::invalid_argument("A subelement of a neighbor report is null");
    }
    return *sub;
}

Report::SubElementPtr make_sub_element(SubID id) {
    switch (id) {
        case SubID::BSS_TRANSITION_CANDIDATE_PREFERENCE:
            return std::make_unique<Report::BSSTransitionCandidatePreference>();
        case SubID::BASIC_MULTI_LINK:
            return std::make_unique<Report::BasicMultiLinkSubElement>();
        default:
            return std::make_unique<Report::DummySubElement>(id);
    }
}

/// Names of subelements, table 9-173.
std::string_view name_of(SubID id) {
    struct Row {
        std::uint8_t id;
        std::string_view name;
    };
    static constexpr auto rows = std::to_array<Row>({
        {1, "TSF Information"},
        {2, "Condensed Country String"},
        {3, "BSS Transition Candidate Preference"},
        {4, "BSS Termination Duration"},
        {5, "Bearing"},
        {6, "Wide Bandwidth Channel"},
        {39, "Measurement Report"},
        {45, "HT Capabilities"},
        {61, "HT Operation"},
        {62, "Secondary Channel Offset"},
        {66, "Measurement Pilot Transmission"},
        {70, "RM Enabled Capabilities"},
        {71, "Multiple BSSID"},
        {191, "VHT Capabilities"},
        {192, "VHT Operation"},
        {201, "Basic Multi-Link"},
        {221, "Vendor Specific"},
    });
    const auto* const row = std::ranges::find(rows, static_cast<std::uint8_t>(id), &Row::id);
    return row != rows.end() ? row->name : std::string_view();
}

}  // namespace

bool Report::SubElementBase::operator==(const SubElementBase& other) const {
    return get_type() == other.get_type() && typeid(*this) == typeid(other) && equal_fields(other);
}

void Report::SubElementBase::check_fields() const {
    if (get_length() - header_length > std::numeric_limits<std::uint8_t>::max()) {
        throw SerializationException("Invalid length");
    }
}

// --- BSS transition candidate preference

void Report::BSSTransitionCandidatePreference::serialize_impl(std::ostream& os,
                                                              SerializationContext& ctx) const {
    write_header(os, ctx, *this);
    Octet::serialize(os, ctx, preference_);
}

template <class Source>
void Report::BSSTransitionCandidatePreference::read_from(Source& source,
                                                         SerializationContext& ctx) {
    SubID id{};
    impl::read_value(source, ctx, id);
    if (id != SUBELEMENT_ID) {
        throw SerializationException("Invalid ID");
    }
    std::uint8_t length = 0;
    impl::read_value(source, ctx, length);
    if (length != sizeof preference_) {
        throw SerializationException("Invalid length");
    }
    impl::read_value(source, ctx, preference_);
}

void Report::BSSTransitionCandidatePreference::deserialize_impl(std::istream& is,
                                                                SerializationContext& ctx) {
    read_from(is, ctx);
}

void Report::BSSTransitionCandidatePreference::deserialize_from(impl::ByteCursor& source,
                                                                SerializationContext& ctx) {
    read_from(source, ctx);
}

bool Report::BSSTransitionCandidatePreference::equal_fields(const SubElementBase& other) const {
    return preference_ == static_cast<const BSSTransitionCandidatePreference&>(other).preference_;
}

void Report::BSSTransitionCandidatePreference::visit_fields(
    IEEE802_11_FieldVisitor& visitor) const {
    visitor.number("preference", preference_);
}

void Report::BSSTransitionCandidatePreference::assign_fields(IEEE802_11_FieldSource& source) {
    preference_ = static_cast<std::uint8_t>(source.number("preference", 8));
}

// --- Basic Multi-Link

Report::BasicMultiLinkSubElement::BasicMultiLinkSubElement(const MACAddress& mld_mac_address)
    : element_(IEEE802_11_MultiLink::Mode::NEIGHBOR_REPORT) {
    element_.set_mld_mac_address(mld_mac_address);
}

Report::BasicMultiLinkSubElement::BasicMultiLinkSubElement(IEEE802_11_MultiLink element) {
    set_basic_multi_link_element(std::move(element));
}

void Report::BasicMultiLinkSubElement::set_basic_multi_link_element(IEEE802_11_MultiLink element) {
    if (!element.is_basic()) {
        throw SerializationException("Multi-Link Element must be of basic type");
    }
    element_ = std::move(element);
    element_.set_mode(IEEE802_11_MultiLink::Mode::NEIGHBOR_REPORT);
}

void Report::BasicMultiLinkSubElement::serialize_impl(std::ostream& os,
                                                      SerializationContext& ctx) const {
    element_.serialize_impl(os, ctx);
}

void Report::BasicMultiLinkSubElement::deserialize_impl(std::istream& is,
                                                        SerializationContext& ctx) {
    element_.deserialize_impl(is, ctx);
}

void Report::BasicMultiLinkSubElement::deserialize_from(impl::ByteCursor& source,
                                                        SerializationContext& ctx) {
    element_.deserialize_from(source, ctx);
}

bool Report::BasicMultiLinkSubElement::equal_fields(const SubElementBase& other) const {
    return element_ == static_cast<const BasicMultiLinkSubElement&>(other).element_;
}

void Report::BasicMultiLinkSubElement::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    element_.visit_fields(visitor);
}

void Report::BasicMultiLinkSubElement::assign_fields(IEEE802_11_FieldSource& source) {
    element_.assign_fields(source);
    if (!element_.is_basic()) {
        source.fail("Multi-Link Element must be of basic type");
    }
}

// --- Every other subelement

void Report::DummySubElement::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    write_header(os, ctx, *this);
    BinarySerializableType<IEEE802_11_Body>::serialize(os, ctx, payload_);
}

template <class Source>
void Report::DummySubElement::read_from(Source& source, SerializationContext& ctx) {
    impl::read_value(source, ctx, id_);
    std::uint8_t length = 0;
    impl::read_value(source, ctx, length);
    std::array<std::uint8_t, std::numeric_limits<std::uint8_t>::max()> room{};
    const std::span<std::uint8_t> payload(room.data(), length);
    impl::read_octets(source, payload);
    payload_.assign(payload.begin(), payload.end());
}

void Report::DummySubElement::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

void Report::DummySubElement::deserialize_from(impl::ByteCursor& source,
                                               SerializationContext& ctx) {
    read_from(source, ctx);
}

bool Report::DummySubElement::equal_fields(const SubElementBase& other) const {
    return payload_ == static_cast<const DummySubElement&>(other).payload_;
}

void Report::DummySubElement::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    visitor.octets("payload_hex", payload_);
}

void Report::DummySubElement::assign_fields(IEEE802_11_FieldSource& source) {
    payload_ = source.octets("payload_hex");
}

// --- The report

/// | offset | size | field             | clause                         |
/// |--------|------|-------------------|--------------------------------|
/// | 2      | 6    | BSSID             | 9.4.2.36                       |
/// | 8      | 4    | BSSID information | 9.4.2.36                       |
/// | 12     | 1    | operating class   | 9.4.2.36, Annex E              |
/// | 13     | 1    | channel number    | 9.4.2.36                       |
/// | 14     | 1    | PHY type          | 9.4.2.36, dot11PHYType         |
/// | 15     |      | subelements       | 9.4.2.36                       |
struct IEEE802_11_NeighborReport::Layout {
    using E = IEEE802_11_NeighborReport;
    using fields = layout::Fields<layout::Always<"bssid", &E::bssid_>,
                                  layout::Always<"bssid_information", &E::bssid_information_>,
                                  layout::Always<"operating_class", &E::operating_class_>,
                                  layout::Always<"channel_number", &E::channel_number_>,
                                  layout::Always<"phy_type", &E::phy_type_>>;
    static_assert(fields::fixed_length == 13);
    /// What remains of the body is a subelement from this size on.
    static constexpr std::size_t least_sub_element = 3;
};

IEEE802_11_NeighborReport::IEEE802_11_NeighborReport(const MACAddress& bssid,
                                                     const BSSIDInformation& bssid_information,
                                                     std::uint8_t operating_class,
                                                     std::uint8_t channel_number, PHYType phy_type,
                                                     SubElementList sub_elements)
    : bssid_(bssid),
      bssid_information_(bssid_information),
      operating_class_(operating_class),
      channel_number_(channel_number),
      phy_type_(phy_type),
      sub_elements_(std::move(sub_elements)) {
    std::ranges::for_each(sub_elements_, required);
}

IEEE802_11_NeighborReport::IEEE802_11_NeighborReport(const MACAddress& bssid,
                                                     const BSSIDInformation& bssid_information,
                                                     std::uint8_t operating_class,
                                                     std::uint8_t channel_number, PHYType phy_type,
                                                     SubElementPtr sub_element)
    : IEEE802_11_NeighborReport(bssid, bssid_information, operating_class, channel_number,
                                phy_type) {
    required(sub_element);
    sub_elements_.push_back(std::move(sub_element));
}

const Report::SubElementBase* Report::get_first_sub_element_by_id(SubID id) const {
    const auto found = std::ranges::find_if(
        sub_elements_, [id](const SubElementPtr& sub) { return required(sub).get_type() == id; });
    return found != sub_elements_.end() ? found->get() : nullptr;
}

std::uint32_t Report::get_length() const {
    std::uint8_t sum = 0;
    for (const SubElementPtr& sub : sub_elements_) {
        sum = static_cast<std::uint8_t>(sum + required(sub).get_length());
    }
    return HEADER_LENGTH + Layout::fields::fixed_length + sum;
}

// Deliberate: the whole is never too long, the Length octet wraps as get_length() does.
void Report::check_fields() const {
    for (const SubElementPtr& sub : sub_elements_) {
        required(sub).check_fields();
    }
}

void Report::check_id(std::uint8_t id) const {
    if (id != static_cast<std::uint8_t>(ELEMENT_ID)) {
        throw SerializationException("Invalid ID");
    }
}

void Report::write_body(std::ostream& os, SerializationContext& ctx) const {
    Layout::fields::write(*this, os, ctx);
    for (const SubElementPtr& sub : sub_elements_) {
        sub->serialize_impl(os, ctx);
    }
}

void Report::read_body(impl::ByteCursor& body, SerializationContext& ctx) {
    sub_elements_.clear();
    Layout::fields::read(*this, body);
    while (body.remaining() >= Layout::least_sub_element) {
        SubElementPtr sub = make_sub_element(static_cast<SubID>(body.peek()));
        sub->deserialize_from(body, ctx);
        sub_elements_.push_back(std::move(sub));
    }
}

bool Report::equal_fields(const IEEE802_11_Element_Base& other) const {
    const auto& report = static_cast<const Report&>(other);
    return Layout::fields::equal(*this, report) &&
           std::ranges::equal(sub_elements_, report.sub_elements_,
                              [](const SubElementPtr& a, const SubElementPtr& b) {
                                  return required(a) == required(b);
                              });
}

void Report::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    std::ranges::for_each(sub_elements_, required);
    Layout::fields::visit(*this, visitor);
    visitor.open_list("subelements");
    for (const SubElementPtr& sub : sub_elements_) {
        visitor.open_object({});
        visitor.number("id", static_cast<std::uint8_t>(sub->get_type()));
        layout::visit_meaning(visitor, "name", name_of(sub->get_type()));
        visitor.open_object("fields");
        sub->visit_fields(visitor);
        visitor.close_object();
        visitor.close_object();
    }
    visitor.close_list();
}

void Report::assign_fields(IEEE802_11_FieldSource& source) {
    Layout::fields::assign(*this, source);
    sub_elements_.clear();
    for (std::size_t count = source.open_list("subelements"); count > 0; --count) {
        source.open_object({});
        SubElementPtr sub = make_sub_element(static_cast<SubID>(source.number("id", 8)));
        layout::skip_meaning(source, "name");
        source.open_object("fields");
        sub->assign_fields(source);
        source.close_object();
        source.close_object();
        sub_elements_.push_back(std::move(sub));
    }
    source.close_list();
}

std::ostream& operator<<(std::ostream& os, const IEEE802_11_NeighborReport& report) {
    impl::ClassicStream text;
    text << report.get_bssid() << '\n'
         << report.get_bssid_information() << " (BSSID information)\n"
         << +report.get_operating_class() << " (opclass)\n"
         << +report.get_channel_number() << " (channel)\n"
         << report.get_phy_type() << " (phy type)";
    for (const auto& sub : report.sub_elements()) {
        text << '\n' << +static_cast<std::uint8_t>(required(sub).get_type()) << " (sub-element)";
    }
    return impl::write_text(os, text.view());
}

}  // namespace nuv::ieee802_11
