// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <initializer_list>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "nuv/channel_types.hpp"
#include "nuv/export.hpp"
#include "nuv/small_set.hpp"
#include "nuv/small_vector.hpp"
#include "nuv/type_with_ratio.hpp"

namespace nuv {
class ChannelEntry;
class ChannelInfo;
class ChannelList;
}  // namespace nuv

/// Operating classes (IEEE 802.11-2020, Annex E, with the 320 MHz class of 802.11be): which class a
/// channel operates in, and the channels, frequencies and segments of a class.
///
/// A segment is the run of 20 MHz channels that is used as one; its center is numbered like a
/// channel.
namespace nuv::OperatingClassDeduction {

/// Where a table of classes applies. There are tables for EUROPE and GLOBAL.
enum class Region : std::uint8_t {
    USA = 0,
    EUROPE = 1,
    JAPAN = 2,
    GLOBAL = 3,
    CHINA = 4,
};
/// "unknown region value 7" where there is no enumerator.
NUV_EXPORT std::string enum_to_string(Region value);
NUV_EXPORT bool string_to_enum(std::string_view text, Region& out);
NUV_EXPORT std::ostream& operator<<(std::ostream& os, Region value);

/// What the channels of a class are used for.
enum class Behavior : std::uint8_t {
    SECONDARY_SEGMENT = 0,  ///< secondary 80 MHz segment of 80+80 MHz
    PRIMARY_LOWER = 2,      ///< primary channel of 40 MHz, the secondary one lies above
    PRIMARY_UPPER = 3,      ///< primary channel of 40 MHz, the secondary one lies below
};
using Behaviors = SmallSet<Behavior, 4>;

/// Channel numbers, ascending.
using ChannelSet = SmallSet<std::uint8_t, 256>;
/// Numbers of operating classes, ascending.
using OpclassSet = SmallSet<std::uint8_t, 256>;

/// One operating class.
struct OpclassDefinition {
    std::uint8_t opclass = 0;
    KiloHertz starting_frequency;  ///< of channel 0; the others follow by channel_to_frequency()
    MegaHertz channel_spacing;     ///< 25 for 20 MHz channels of the 2.4 GHz band
    ChannelSet channels;           ///< that may be used in the class
    /// Centers of the segments. None where a channel is its own center, and where its behavior
    /// tells on which side of it the center lies.
    ChannelSet center_channels;
    Behaviors behaviors;
};

/// A segment of a class.
struct Segment {
    std::uint8_t center = 0;  ///< number of its center
    KiloHertz center_frequency;
    ChannelSet channels;  ///< its 20 MHz channels, ascending; the center alone in narrower classes
};

/// The operating classes of one region. Where a function takes a class, it throws
/// std::invalid_argument if the table has none of that number.
class NUV_EXPORT OpclassLookup {
public:
    /// By channel spacing; the classes of one spacing in the order of the table.
    using Groups = std::map<MegaHertz, std::vector<OpclassDefinition>>;

    OpclassLookup(std::initializer_list<OpclassDefinition> definitions);

    const Groups& get_groups() const noexcept { return groups_; }

    /// Frequency of the number on the raster of the class, be it one of its channels or not.
    KiloHertz get_channel_frequency(std::uint8_t channel, std::uint8_t opclass) const;

    /// Number of one of the class's `channels` or `center_channels`. Throws std::invalid_argument
    /// for every other frequency.
    std::uint8_t get_channel_from_frequency(KiloHertz frequency, std::uint8_t opclass) const;

    /// The segments that hold the channel, by center; of the 320 MHz segments, which overlap, there
    /// may be two. One of `center_channels` belongs to its own segment; a class without them has
    /// segments for its primary channels alone. Throws std::invalid_argument if there is none, and
    /// for a 40 MHz class that has neither centers nor a behavior.
    SmallVector<Segment, 2> get_segments(std::uint8_t channel, std::uint8_t opclass) const;

    /// Centers of these segments. Throws as above.
    SmallVector<KiloHertz, 2> get_segment_center_frequencies(std::uint8_t channel,
                                                             std::uint8_t opclass) const;

    /// The centers of all segments, ascending. Throws as above.
    std::vector<KiloHertz> get_opclass_center_frequencies(std::uint8_t opclass) const;

    /// The channel set as Annex E defines the class, ascending: of a class with centers the
    /// centers, else the channels.
    std::vector<KiloHertz> get_opclass_definition_channel_frequencies(std::uint8_t opclass) const;

    /// The width of the class with what lies below, and its behavior. Whether radar must be looked
    /// for is no matter of the class.
    ChannelCapabilityBits get_channel_capabilities(std::uint8_t opclass) const;

    ChannelSet get_all_opclass_channels(std::uint8_t opclass) const;

    /// The 20 MHz channels of the one segment that holds the channel, as above. Throws
    /// std::invalid_argument if there is none or more than one.
    ChannelSet get_segment_opclass_channels(std::uint8_t channel, std::uint8_t opclass) const;

    OpclassSet get_all_region_opclasses() const;

    bool is_secondary_segment(std::uint8_t opclass) const;

    /// The first class, by spacing and then in the order of the table, that has that frequency among
    /// its `channels` or `center_channels` and that width: 0 for none. A class with a primary channel's behavior must have it
    /// in common with `behaviors`, any other matches whatever they are. 80+80 MHz finds classes of
    /// secondary segments, 80 MHz the others.
    std::uint8_t get_opclass(ChannelWidth width, KiloHertz frequency,
                             const Behaviors& behaviors) const;

    Behaviors behaviors_from_channel_capabilities(ChannelCapabilityBits capabilities) const;

    /// SECONDARY_SEGMENT for 80+80 MHz; for 40 MHz on which side of the center the primary channel
    /// lies.
    Behaviors behaviors_from_channel_info(const ChannelInfo& info) const;

    /// The class of the primary segment and, for 80+80 MHz, behind it that of the secondary one.
    /// Throws std::logic_error that names the segment without a class, and std::invalid_argument if
    /// the primary frequency was never set.
    SmallVector<std::uint8_t, 2> get_opclasses_from_channel_info(const ChannelInfo& info) const;
    /// Whether that would not throw.
    bool opclass_deducible_from_channel_info(const ChannelInfo& info) const;
    /// Whether it is a channel of a 20 MHz class.
    bool opclass_deducible_from_channel_entry(const ChannelEntry& entry) const;

    /// The classes of which the list has a channel that is capable of their width and behavior.
    OpclassSet get_supported_operating_classes(const ChannelList& list) const;

    /// Channels, ascending, for each width and behavior among the capabilities of which there is a
    /// class that has them as primary channel; radar is no matter.
    std::vector<KiloHertz> get_primary_frequencies_with_capabilities(
        ChannelCapabilityBits capabilities) const;

    /// For people.
    void print_lookup_table(std::ostream& os) const;

private:
    const OpclassDefinition& definition(std::uint8_t opclass) const;
    SmallVector<std::uint8_t, 2> deduce(const ChannelInfo& info) const;

    Groups groups_;
};

/// Both are built on first use.
NUV_EXPORT const OpclassLookup& get_channel_opclasses_global();
NUV_EXPORT const OpclassLookup& get_channel_opclasses_europe();

/// The table of a region. Throws std::invalid_argument where there is none.
NUV_EXPORT const OpclassLookup& get_channel_opclasses(Region region);

/// An operation of OpclassLookup as a free function that takes a region behind its arguments. A
/// region without a table is refused before anything else.
template <class Result, class... Arguments>
class RegionalOperation {
public:
    using Member = Result (OpclassLookup::*)(Arguments...) const;

    explicit(false) constexpr RegionalOperation(Member member) : member_(member) {}

    Result operator()(Arguments... arguments, Region region) const {
        return (get_channel_opclasses(region).*member_)(arguments...);
    }

private:
    Member member_;
};

// clang-format off
inline constexpr RegionalOperation get_channel_frequency = &OpclassLookup::get_channel_frequency;
inline constexpr RegionalOperation get_channel_from_frequency = &OpclassLookup::get_channel_from_frequency;
inline constexpr RegionalOperation get_segments = &OpclassLookup::get_segments;
inline constexpr RegionalOperation get_segment_center_frequencies = &OpclassLookup::get_segment_center_frequencies;
inline constexpr RegionalOperation get_opclass_center_frequencies = &OpclassLookup::get_opclass_center_frequencies;
inline constexpr RegionalOperation get_opclass_definition_channel_frequencies = &OpclassLookup::get_opclass_definition_channel_frequencies;
inline constexpr RegionalOperation get_channel_capabilities = &OpclassLookup::get_channel_capabilities;
inline constexpr RegionalOperation get_all_opclass_channels = &OpclassLookup::get_all_opclass_channels;
inline constexpr RegionalOperation get_segment_opclass_channels = &OpclassLookup::get_segment_opclass_channels;
inline constexpr RegionalOperation get_all_region_opclasses = &OpclassLookup::get_all_region_opclasses;
inline constexpr RegionalOperation is_secondary_segment = &OpclassLookup::is_secondary_segment;
inline constexpr RegionalOperation get_opclass = &OpclassLookup::get_opclass;
inline constexpr RegionalOperation behaviors_from_channel_capabilities = &OpclassLookup::behaviors_from_channel_capabilities;
inline constexpr RegionalOperation behaviors_from_channel_info = &OpclassLookup::behaviors_from_channel_info;
inline constexpr RegionalOperation opclass_deducible_from_channel_info = &OpclassLookup::opclass_deducible_from_channel_info;
inline constexpr RegionalOperation opclass_deducible_from_channel_entry = &OpclassLookup::opclass_deducible_from_channel_entry;
inline constexpr RegionalOperation get_opclasses = &OpclassLookup::get_supported_operating_classes;
inline constexpr RegionalOperation get_primary_frequencies_with_capabilities = &OpclassLookup::get_primary_frequencies_with_capabilities;
inline constexpr RegionalOperation print_lookup_table = &OpclassLookup::print_lookup_table;
// clang-format on

/// The same, but for a known region without a table the error names it.
NUV_EXPORT SmallVector<std::uint8_t, 2> get_opclasses_from_channel_info(const ChannelInfo& info,
                                                                        Region region);

}  // namespace nuv::OperatingClassDeduction
