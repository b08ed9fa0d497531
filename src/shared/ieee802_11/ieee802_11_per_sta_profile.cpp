// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_per_sta_profile.hpp"

#include <functional>

#include "internal/ieee802_11/element_factory.hpp"
#include "internal/ieee802_11/element_layout.hpp"
#include "internal/ieee802_11/element_sequence.hpp"
#include "internal/ieee802_11/fragmentation.hpp"
#include "internal/ieee802_11/link_id.hpp"

namespace nuv::ieee802_11 {

using serialization::BinarySerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;

/// | size | field                       | clause                                      |
/// |------|-----------------------------|---------------------------------------------|
/// | 2    | sta_control                 | 9.4.2.322.2.4                               |
/// | 1    | STA Info Length             | counts itself and the STA Info              |
/// | 6    | sta_mac_address             | with STA Control bit 5                      |
/// | 2    | beacon_interval             | with bit 6                                  |
/// | 8    | tsf_offset                  | with bit 7                                  |
/// | 1+1  | dtim_count, dtim_period     | with bit 8                                  |
/// | 1, 2 | nstr_indication_bitmap      | with bit 9; two octets with bit 10          |
/// | 1    | bss_parameters_change_count | with bit 11                                 |
/// | rest | sta_info_surplus            | what the STA Info Length counts beyond that |
/// | 2    | capability_information      | 9.4.1.4                                     |
/// | rest | elements                    |                                             |
struct IEEE802_11_PerSTAProfile::Layout {
    using E = IEEE802_11_PerSTAProfile;
    template <std::size_t bit>
    static bool has(const E& e) {
        return e.sta_control_[bit];
    }
    static bool has_high_octet(const E& e) {
        return e.sta_control_[nstr_indication] && e.sta_control_[nstr_two_octets];
    }

    using StaInfo = layout::SelfCounted<
        layout::Rest<"sta_info_surplus", &E::sta_info_surplus_>,
        layout::When<layout::Always<"sta_mac_address", &E::sta_mac_address_>, has<mac_address>>,
        layout::When<layout::LittleEndian<"beacon_interval", &E::beacon_interval_>,
                     has<beacon_interval>>,
        layout::When<layout::LittleEndian<"tsf_offset", &E::tsf_offset_>, has<tsf_offset>>,
        layout::When<layout::Always<"dtim_count", &E::dtim_count_>, has<dtim_info>>,
        layout::When<layout::Always<"dtim_period", &E::dtim_period_>, has<dtim_info>>,
        layout::When<layout::Always<"nstr_indication_bitmap", &E::nstr_bitmap_>,
                     has<nstr_indication>>,
        layout::When<layout::Always<"nstr_indication_bitmap_high", &E::nstr_bitmap_high_>,
                     has_high_octet>,
        layout::When<
            layout::Always<"bss_parameters_change_count", &E::bss_parameters_change_count_>,
            has<change_count>>>;
};

namespace {

constexpr std::uint32_t sta_control_size = 2;
constexpr std::uint32_t capability_information_size = 2;
constexpr std::string_view capability_name = "capability_information";

}  // namespace

void IEEE802_11_PerSTAProfile::set_link_id(std::uint8_t link_id) {
    impl::require_link_id(link_id);
    sta_control_ = (sta_control_.to_ulong() & ~link_id_mask) | link_id;
}

void IEEE802_11_PerSTAProfile::set_nstr_indication_bitmap(std::optional<std::uint16_t> value) {
    const std::uint16_t bitmap = value.value_or(0);
    mark(nstr_indication, value.has_value());
    sta_control_[nstr_two_octets] = bitmap > 0xFF;
    nstr_bitmap_ = static_cast<std::uint8_t>(bitmap);
    nstr_bitmap_high_ = static_cast<std::uint8_t>(bitmap >> 8U);
}

std::uint32_t IEEE802_11_PerSTAProfile::get_length() const {
    const auto profile = capability_information_
                             ? capability_information_size + elements_.octets().size()
                             : std::size_t{0};
    return impl::fragmented_length(sta_control_size +
                                   (has_sta_info_ ? Layout::StaInfo::length(*this) : 0) +
                                   static_cast<std::uint32_t>(profile));
}

void IEEE802_11_PerSTAProfile::check_fields() const {
    if (Layout::StaInfo::length(*this) > impl::max_content) {
        throw SerializationException("Invalid length");
    }
}

std::optional<std::uint8_t> IEEE802_11_PerSTAProfile::fragment_id() const {
    return impl::subelement_fragment_id;
}

void IEEE802_11_PerSTAProfile::write_body(std::ostream& os, SerializationContext& ctx) const {
    BinarySerializableType<std::bitset<16>>::serialize(os, ctx, sta_control_);
    if (has_sta_info_) {
        Layout::StaInfo::write(*this, os, ctx);
    }
    if (capability_information_) {
        BinarySerializableType<std::bitset<16>>::serialize(os, ctx, *capability_information_);
        BinarySerializableType<IEEE802_11_ElementSequence::Octets>::serialize(os, ctx,
                                                                              elements_.octets());
    }
}

std::unique_ptr<IEEE802_11_Element_Base> IEEE802_11_PerSTAProfile::make_element(
    IEEE802_11_Element_ID id, IEEE802_11_Element_ID_Extension extension) const {
    using Ext = IEEE802_11_Element_ID_Extension;
    // A profile holds no links of its own: deeper nesting is not followed.
    if (extension == Ext::MULTI_LINK) {
        extension = Ext::NO_EXTENSION;
    }
    std::optional<IEEE802_11_EHTMaps> maps;
    if (extension == Ext::EHT_CAPABILITIES) {
        const auto* he = elements_.find<IEEE802_11_HECapabilities>();
        maps = he != nullptr ? factory::eht_maps(*he) : eht_maps_;
    }
    return factory::make_element(id, extension, maps ? &*maps : nullptr);
}

void IEEE802_11_PerSTAProfile::read_body(impl::ByteCursor& body, SerializationContext& ctx) {
    if (!body.whole() || body.remaining() < sta_control_size) {
        throw SerializationException("Invalid length");
    }
    body.read(sta_control_);
    has_sta_info_ = body.remaining() != 0;
    if (has_sta_info_) {
        Layout::StaInfo::read(*this, body);
    } else {
        Layout::StaInfo::clear(*this);
    }
    capability_information_.reset();
    if (body.remaining() != 0) {
        if (body.remaining() < capability_information_size) {
            throw SerializationException("Invalid length");
        }
        body.read(capability_information_.emplace());
    }
    impl::read_sequence(body, ctx, std::bind_front(&IEEE802_11_PerSTAProfile::make_element, this),
                        elements_);
}

bool IEEE802_11_PerSTAProfile::equal_fields(const IEEE802_11_Element_Base& other) const {
    const auto& o = static_cast<const IEEE802_11_PerSTAProfile&>(other);
    return sta_control_ == o.sta_control_ && has_sta_info_ == o.has_sta_info_ &&
           Layout::StaInfo::equal(*this, o) &&
           capability_information_ == o.capability_information_ && elements_ == o.elements_;
}

void IEEE802_11_PerSTAProfile::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    layout::visit_value(visitor, "sta_control", sta_control_);
    visitor.number("link_id", get_link_id());
    if (has_sta_info_) {
        Layout::StaInfo::visit(*this, visitor);
    }
    if (capability_information_) {
        layout::visit_value(visitor, capability_name, *capability_information_);
        impl::visit_sequence(visitor, "elements", elements_, ieee802_11_element_name);
    }
}

void IEEE802_11_PerSTAProfile::assign_fields(IEEE802_11_FieldSource& source) {
    layout::assign_value(source, "sta_control", sta_control_);
    set_link_id(static_cast<std::uint8_t>(source.number("link_id", link_id_bits)));
    has_sta_info_ = source.has("sta_info_surplus");
    if (has_sta_info_) {
        Layout::StaInfo::assign(*this, source);
    } else {
        Layout::StaInfo::clear(*this);
    }
    capability_information_.reset();
    elements_.clear();
    if (source.has(capability_name)) {
        layout::assign_value(source, capability_name, capability_information_.emplace());
        has_sta_info_ = true;  // it stands before
        impl::assign_sequence(source, "elements",
                              std::bind_front(&IEEE802_11_PerSTAProfile::make_element, this),
                              elements_);
    }
}

}  // namespace nuv::ieee802_11
