// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"

#include <functional>
#include <stdexcept>

#include "internal/ieee802_11/element_layout.hpp"
#include "internal/ieee802_11/element_sequence.hpp"
#include "internal/ieee802_11/fragmentation.hpp"
#include "internal/ieee802_11/link_id.hpp"
#include "nuv/ieee802_11/ieee802_11_dummy_element.hpp"
#include "nuv/ieee802_11/ieee802_11_per_sta_profile.hpp"

namespace nuv::ieee802_11 {

using serialization::BinarySerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;

/// Behind the control field, which is always there:
///
/// | size | field                        | clause                                         |
/// |------|------------------------------|------------------------------------------------|
/// | 1    | Common Info Length           | counts itself and the Common Info              |
/// | 6    | mld_mac_address              | 9.4.2.322.2.3                                  |
/// | 1    | link_id                      | with control bit 4                             |
/// | 1    | bss_parameters_change_count  | with bit 5                                     |
/// | 2    | medium_synchronization_delay | with bit 6                                     |
/// | 2    | eml_capabilities             | with bit 7                                     |
/// | 2    | mld_capabilities             | with bit 8                                     |
/// | 1    | ap_mld_id                    | with bit 9                                     |
/// | 2    | extended_mld_capabilities    | with bit 10                                    |
/// | rest | common_info_surplus          | what the Common Info Length counts beyond that |
/// | rest | link_info                    | subelements                                    |
struct IEEE802_11_MultiLink::Layout {
    using E = IEEE802_11_MultiLink;
    template <std::size_t bit>
    static bool has(const E& e) {
        return e.control_[bit];
    }

    using CommonInfo = layout::SelfCounted<
        layout::Rest<"common_info_surplus", &E::common_info_surplus_>,
        layout::Always<"mld_mac_address", &E::mld_mac_address_>,
        layout::When<layout::Always<"link_id", &E::link_id_>, has<link_id>>,
        layout::When<
            layout::Always<"bss_parameters_change_count", &E::bss_parameters_change_count_>,
            has<change_count>>,
        layout::When<
            layout::LittleEndian<"medium_synchronization_delay", &E::medium_synchronization_delay_>,
            has<medium_delay>>,
        layout::When<layout::Always<"eml_capabilities", &E::eml_capabilities_>, has<eml>>,
        layout::When<layout::Always<"mld_capabilities", &E::mld_capabilities_>, has<mld>>,
        layout::When<layout::Always<"ap_mld_id", &E::ap_mld_id_>, has<ap_mld_id>>,
        layout::When<layout::Always<"extended_mld_capabilities", &E::extended_mld_capabilities_>,
                     has<extended_mld>>>;
};

namespace {

constexpr std::uint32_t control_size = 2;

/// Subelements have IDs of their own.
std::string link_info_name(IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension) {
    if (id == IEEE802_11_PerSTAProfile::ELEMENT_ID) {
        return "Per-STA Profile";
    }
    if (static_cast<std::uint8_t>(id) == impl::subelement_fragment_id) {
        return "Fragment";
    }
    return id == IEEE802_11_Element_ID::VENDOR_SPECIFIC ? ieee802_11_element_name(id, extension)
                                                        : std::string();
}

using Control = BinarySerializableType<std::bitset<16>>;
using Octets = BinarySerializableType<std::span<const std::uint8_t>>;

}  // namespace

void IEEE802_11_MultiLink::set_body(const std::bitset<16>& control, const IEEE802_11_Body& body) {
    if ((control.to_ulong() & type_mask) == static_cast<unsigned long>(Type::BASIC)) {
        throw std::invalid_argument("The body of a Basic Multi-Link element is typed");
    }
    control_ = control;
    Layout::CommonInfo::clear(*this);
    link_info_.clear();
    body_ = body;
}

void IEEE802_11_MultiLink::set_link_id(std::optional<std::uint8_t> value) {
    impl::require_link_id(value.value_or(0));
    set(link_id, link_id_, value);
}

void IEEE802_11_MultiLink::require_basic() const {
    if (!is_basic()) {
        throw std::logic_error("Only a Basic Multi-Link element has this field");
    }
}

std::uint32_t IEEE802_11_MultiLink::get_length() const {
    const std::size_t body =
        is_basic() ? Layout::CommonInfo::length(*this) + link_info_.octets().size() : body_.size();
    const std::uint32_t extension = mode_ == Mode::ELEMENT ? 1 : 0;
    return impl::fragmented_length(extension + control_size + static_cast<std::uint32_t>(body));
}

IEEE802_11_Element_ID IEEE802_11_MultiLink::get_type() const {
    return mode_ == Mode::ELEMENT ? ELEMENT_ID : IEEE802_11_Element_ID::BASIC_MULTI_LINK_SUBELEMENT;
}

IEEE802_11_Element_ID_Extension IEEE802_11_MultiLink::get_extension_type() const {
    return mode_ == Mode::ELEMENT ? EXTENSION_ID : IEEE802_11_Element_ID_Extension::NO_EXTENSION;
}

void IEEE802_11_MultiLink::check_id(std::uint8_t id) const {
    if (id != static_cast<std::uint8_t>(get_type())) {
        throw SerializationException("Invalid ID");
    }
}

void IEEE802_11_MultiLink::check_extension(std::uint8_t extension) const {
    if (extension != static_cast<std::uint8_t>(get_extension_type())) {
        throw SerializationException("Unexpected ID");
    }
}

void IEEE802_11_MultiLink::check_fields() const {
    if (mode_ == Mode::NEIGHBOR_REPORT && !is_basic()) {
        throw SerializationException("Only Basic Multi-Link elements allowed in Neighbor Report");
    }
    // The octet of the Common Info's length is always there, and says no more than it can.
    if (is_basic() ? Layout::CommonInfo::length(*this) > impl::max_content : body_.empty()) {
        throw SerializationException("Invalid length");
    }
    IEEE802_11_Element_Base::check_fields();
}

std::optional<std::uint8_t> IEEE802_11_MultiLink::fragment_id() const {
    // A Neighbor Report has no room for a subelement that needs to be continued.
    return mode_ == Mode::ELEMENT ? std::optional(impl::element_fragment_id) : std::nullopt;
}

void IEEE802_11_MultiLink::write_body(std::ostream& os, SerializationContext& ctx) const {
    Control::serialize(os, ctx, control_);
    if (!is_basic()) {
        Octets::serialize(os, ctx, {body_.data(), body_.size()});
        return;
    }
    Layout::CommonInfo::write(*this, os, ctx);
    Octets::serialize(os, ctx, {link_info_.octets().data(), link_info_.octets().size()});
}

std::unique_ptr<IEEE802_11_Element_Base> IEEE802_11_MultiLink::make_subelement(
    IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension /*none*/) const {
    if (id != IEEE802_11_PerSTAProfile::ELEMENT_ID) {
        return std::make_unique<IEEE802_11_DummyElement>(id);
    }
    auto profile = std::make_unique<IEEE802_11_PerSTAProfile>();
    if (eht_maps_) {
        profile->inherit_eht_maps(*eht_maps_);
    }
    return profile;
}

void IEEE802_11_MultiLink::read_body(impl::ByteCursor& body, SerializationContext& ctx) {
    layout::require_whole(body);
    // The Common Info Length is always there.
    if (body.remaining() < control_size + 1) {
        throw SerializationException("Invalid length");
    }
    body.read(control_);
    Layout::CommonInfo::clear(*this);
    link_info_.clear();
    body_.clear();
    if (!is_basic()) {
        if (mode_ == Mode::NEIGHBOR_REPORT) {
            throw SerializationException(
                "Only Basic Multi-Link elements allowed in Neighbor Report");
        }
        layout::read_list(body, body.remaining(), body_);
        return;
    }
    Layout::CommonInfo::read(*this, body);
    impl::read_sequence(body, ctx, std::bind_front(&IEEE802_11_MultiLink::make_subelement, this),
                        link_info_);
}

bool IEEE802_11_MultiLink::equal_fields(const IEEE802_11_Element_Base& other) const {
    const auto& o = static_cast<const IEEE802_11_MultiLink&>(other);
    return control_ == o.control_ && Layout::CommonInfo::equal(*this, o) &&
           link_info_ == o.link_info_ && body_ == o.body_;
}

void IEEE802_11_MultiLink::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    layout::visit_value(visitor, "control", control_);
    visitor.number("type", static_cast<std::uint8_t>(get_multi_link_type()));
    if (!is_basic()) {
        visitor.octets("body_hex", body_);
        return;
    }
    Layout::CommonInfo::visit(*this, visitor);
    impl::visit_sequence(visitor, "link_info", link_info_, link_info_name);
}

void IEEE802_11_MultiLink::assign_fields(IEEE802_11_FieldSource& source) {
    layout::assign_value(source, "control", control_);
    control_ = (control_.to_ulong() & ~type_mask) | source.number("type", type_bits);
    Layout::CommonInfo::clear(*this);
    link_info_.clear();
    body_.clear();
    if (!is_basic()) {
        body_ = source.octets("body_hex");
        return;
    }
    Layout::CommonInfo::assign(*this, source);
    impl::assign_sequence(source, "link_info",
                          std::bind_front(&IEEE802_11_MultiLink::make_subelement, this),
                          link_info_);
}

}  // namespace nuv::ieee802_11
