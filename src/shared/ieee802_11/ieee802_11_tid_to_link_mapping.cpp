// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_tid_to_link_mapping.hpp"

#include <algorithm>
#include <bit>

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;
using serialization::SerializationException;

/// | offset | size   | field                           | clause 9.4.2.324              |
/// |--------|--------|---------------------------------|-------------------------------|
/// | 3      | 1      | control                         | bits as named                 |
/// | 4      | 1      | link_mapping_presence_indicator | unless default_link_mapping   |
/// |        | 2      | mapping_switch_time             | with its control bit          |
/// |        | 3      | expected_duration               | with its control bit          |
/// |        | 1 or 2 | link_maps, each                 | for the TIDs of the indicator |
/// |        | rest   | surplus                         | none is known                 |
struct IEEE802_11_TID_to_Link_Mapping::Layout {
    using E = IEEE802_11_TID_to_Link_Mapping;
    static constexpr std::array control_bits{direction,        default_mapping, switch_time_present,
                                             duration_present, mapping_size,    reserved};
    static constexpr std::size_t duration_octets = 3;

    static bool has_maps(const E& e) { return !e.get_default_link_mapping(); }
    static bool has_switch_time(const E& e) { return switch_time_present.get(e.control_) != 0; }
    static bool has_duration(const E& e) { return duration_present.get(e.control_) != 0; }

    /// In the order of their TIDs.
    struct LinkMaps {
        template <class Element, class Function>
        static void for_each(Element& e, Function function) {
            for (std::size_t tid = 0; tid < NUMBER_OF_TIDS; ++tid) {
                if (e.has_map(tid)) {
                    function(e.link_maps_[tid]);
                }
            }
        }
        static std::uint32_t count(const E& e) {
            return static_cast<std::uint32_t>(std::popcount(e.presence_indicator_));
        }
        static std::uint32_t octets(const E& e) {
            return e.get_link_mapping_size() == LinkMappingSize::ONE_OCTET ? 1 : 2;
        }
        static std::uint32_t length(const E& e) { return octets(e) * count(e); }
        static void write(const E& e, std::ostream& os, SerializationContext& ctx) {
            using Octet = serialization::BinarySerializableType<std::uint8_t>;
            for_each(e, [&](unsigned map) {
                for (auto k = octets(e); k > 0; --k, map >>= 8U) {
                    Octet::serialize(os, ctx, static_cast<std::uint8_t>(map));
                }
            });
        }
        static void read(E& e, impl::ByteCursor& body) {
            clear(e);
            for_each(e, [&](std::uint16_t& map) {
                for (std::uint32_t k = 0; k < octets(e); ++k) {
                    std::uint8_t octet = 0;
                    body.read(octet);
                    map = static_cast<std::uint16_t>(map | octet << 8U * k);
                }
            });
        }
        static void clear(E& e) { e.link_maps_ = {}; }
        static bool equal(const E& a, const E& b) { return a.link_maps_ == b.link_maps_; }
        static void visit(const E& e, IEEE802_11_FieldVisitor& visitor) {
            visitor.open_list("link_maps");
            for_each(e, [&](std::uint16_t map) { visitor.number({}, map); });
            visitor.close_list();
        }
        static void assign(E& e, IEEE802_11_FieldSource& source) {
            clear(e);
            if (source.open_list("link_maps") != count(e)) {
                source.fail("not one for each bit of the presence indicator");
            }
            for_each(e, [&](std::uint16_t& map) {
                map = static_cast<std::uint16_t>(source.number({}, 8 * octets(e)));
            });
            source.close_list();
        }
    };

    using fields = layout::Fields<
        layout::Within<
            layout::Named<&E::control_, control_bits>,
            layout::When<layout::Always<"link_mapping_presence_indicator", &E::presence_indicator_>,
                         has_maps>,
            layout::When<layout::LittleEndian<"mapping_switch_time", &E::mapping_switch_time_>,
                         has_switch_time>,
            layout::When<
                layout::LittleEndian<"expected_duration", &E::expected_duration_, duration_octets>,
                has_duration>,
            layout::When<LinkMaps, has_maps>>,
        layout::Rest<"surplus", &E::surplus_>>;

    static void check_length(std::uint8_t length) {
        if (length == 0) {
            throw SerializationException("Invalid length");
        }
    }
    static void check_fields(const E& e) {
        const bool maps_fit = std::ranges::all_of(e.link_maps_, [&e](std::uint32_t map) {
            return map >> (8 * LinkMaps::octets(e)) == 0;
        });
        if (!maps_fit || e.expected_duration_ >> (8 * duration_octets) != 0) {
            throw SerializationException("Invalid length");
        }
    }
};

bool IEEE802_11_TID_to_Link_Mapping::is_valid() const {
    constexpr std::uint16_t links_0_to_14 = 0x7FFF;
    bool valid = get_direction() != Direction::RESERVED &&
                 (get_default_link_mapping() || presence_indicator_ != 0);
    Layout::LinkMaps::for_each(
        *this, [&](std::uint16_t map) { valid = valid && map != 0 && map <= links_0_to_14; });
    return valid;
}

void IEEE802_11_TID_to_Link_Mapping::set_default_link_mapping(bool value) {
    set(default_mapping, value);
    if (value) {
        presence_indicator_ = 0;
        link_maps_ = {};
    }
}

void IEEE802_11_TID_to_Link_Mapping::set_link_map(std::size_t tid,
                                                  std::optional<std::uint16_t> links) {
    link_maps_.at(tid) = links.value_or(0);
    const auto bit = static_cast<std::uint8_t>(1U << tid);
    presence_indicator_ =
        static_cast<std::uint8_t>((presence_indicator_ & ~bit) | (links ? bit : 0U));
    if (links) {
        set(default_mapping, false);
    }
}

template class IEEE802_11_LayoutElement<IEEE802_11_TID_to_Link_Mapping,
                                        IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                        IEEE802_11_Element_ID_Extension::TID_TO_LINK_MAPPING>;

}  // namespace nuv::ieee802_11
