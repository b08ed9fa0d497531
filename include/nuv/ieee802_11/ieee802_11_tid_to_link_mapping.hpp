// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <optional>

#include "nuv/ieee802_11/ieee802_11_bits.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/ieee802_11/ieee802_11_raw_element.hpp"

namespace nuv::ieee802_11 {

/// TID-To-Link Mapping (ID 255, extension 109; IEEE Std 802.11be-2024, 9.4.2.324): over which links
/// of a multi-link device the frames of each traffic identifier (TID) go. Its numbers are least
/// significant octet first, as the standard has them. Octets behind the known fields are kept.
///
/// "Invalid length": on reading, the Length ends before a field; on writing, a value does not fit
/// its field.
class NUV_EXPORT IEEE802_11_TID_to_Link_Mapping
    : public IEEE802_11_LayoutElement<IEEE802_11_TID_to_Link_Mapping,
                                      IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION,
                                      IEEE802_11_Element_ID_Extension::TID_TO_LINK_MAPPING> {
public:
    static constexpr std::size_t NUMBER_OF_TIDS = 8;

    enum class Direction : std::uint8_t { DOWNLINK = 0, UPLINK = 1, BOTH = 2, RESERVED = 3 };
    enum class LinkMappingSize : std::uint8_t { TWO_OCTETS = 0, ONE_OCTET = 1 };

    /// What a receiver can act upon: the direction is not the reserved one, and either the mapping
    /// is the default one or at least one TID has a map; every map has a link and none beyond 14.
    bool is_valid() const;

    Direction get_direction() const { return static_cast<Direction>(direction.get(control_)); }
    void set_direction(Direction value) { set(direction, value); }

    /// Every TID over every link; there are no maps then.
    bool get_default_link_mapping() const { return default_mapping.get(control_) != 0; }
    /// Setting it drops the maps.
    void set_default_link_mapping(bool value);

    /// When the mapping takes effect: bits 10 to 25 of the TSF timer, time units of 1024 us.
    std::optional<std::uint16_t> get_mapping_switch_time() const {
        return present(switch_time_present, mapping_switch_time_);
    }
    void set_mapping_switch_time(std::optional<std::uint16_t> time) {
        set(switch_time_present, time.has_value());
        mapping_switch_time_ = time.value_or(0);
    }
    /// How long the mapping is in effect, in time units of 1024 us; 24 bits.
    std::optional<std::uint32_t> get_expected_duration() const {
        return present(duration_present, expected_duration_);
    }
    void set_expected_duration(std::optional<std::uint32_t> duration) {
        set(duration_present, duration.has_value());
        expected_duration_ = duration.value_or(0);
    }

    /// Of each map.
    LinkMappingSize get_link_mapping_size() const {
        return static_cast<LinkMappingSize>(mapping_size.get(control_));
    }
    void set_link_mapping_size(LinkMappingSize value) { set(mapping_size, value); }

    /// Bit n: there is a map for TID n.
    std::uint8_t get_link_mapping_presence_indicator() const { return presence_indicator_; }
    /// Bit n: link n. Absent for a TID without a map.
    std::optional<std::uint16_t> get_link_map(std::size_t tid) const {
        return tid < NUMBER_OF_TIDS && has_map(tid) ? std::optional(link_maps_[tid]) : std::nullopt;
    }
    /// A map makes the mapping another than the default one. Throws std::out_of_range for a TID
    /// above 7.
    void set_link_map(std::size_t tid, std::optional<std::uint16_t> links);

    /// The octets behind the known fields.
    const IEEE802_11_Body& get_surplus() const { return surplus_; }
    void set_surplus(const IEEE802_11_Body& octets) { surplus_ = octets; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    static constexpr IEEE802_11_Bits direction{.name = "direction", .first = 0, .count = 2};
    static constexpr IEEE802_11_Bits default_mapping{
        .name = "default_link_mapping", .first = 2, .count = 1};
    static constexpr IEEE802_11_Bits switch_time_present{
        .name = "mapping_switch_time_present", .first = 3, .count = 1};
    static constexpr IEEE802_11_Bits duration_present{
        .name = "expected_duration_present", .first = 4, .count = 1};
    static constexpr IEEE802_11_Bits mapping_size{
        .name = "link_mapping_size", .first = 5, .count = 1};
    static constexpr IEEE802_11_Bits reserved{.name = "reserved", .first = 6, .count = 2};

    template <class T>
    void set(const IEEE802_11_Bits& bits, T value) {
        bits.set(control_, static_cast<std::uint8_t>(value));
    }
    template <class T>
    std::optional<T> present(const IEEE802_11_Bits& flag, T value) const {
        return flag.get(control_) != 0 ? std::optional(value) : std::nullopt;
    }
    bool has_map(std::size_t tid) const { return (presence_indicator_ >> tid & 1U) != 0; }

    std::uint8_t control_ = 0;
    std::uint8_t presence_indicator_ = 0;
    std::uint16_t mapping_switch_time_ = 0;
    std::uint32_t expected_duration_ = 0;
    std::array<std::uint16_t, NUMBER_OF_TIDS> link_maps_{};  // zero for a TID without a map
    IEEE802_11_Body surplus_;
};

}  // namespace nuv::ieee802_11
