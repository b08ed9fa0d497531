// SPDX-License-Identifier: Apache-2.0
#include "nuv/type_validator.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "internal/log_module.hpp"
#include "nuv/channel_entry.hpp"
#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/nss_table.hpp"
#include "nuv/operating_class_deduction.hpp"

namespace nuv {

using OperatingClassDeduction::ChannelSet;

namespace {

constinit impl::LogModule log_module{"type_validator", "src/shared/type_validator"};

const OperatingClassDeduction::OpclassLookup& global() {
    return OperatingClassDeduction::get_channel_opclasses_global();
}

/// Whether each channel's frequency is among the class's frequencies.
bool has_frequencies(std::uint8_t opclass, const ChannelSet& channels,
                     const std::vector<KiloHertz>& frequencies) {
    return std::ranges::all_of(channels, [&](std::uint8_t channel) {
        return std::ranges::binary_search(frequencies,
                                          global().get_channel_frequency(channel, opclass));
    });
}

/// Channel 2 of the 6 GHz band, whose raster begins at 5925 MHz, matches none on purpose.
bool matches(std::uint8_t channel, KiloHertz frequency) {
    constexpr struct {
        KiloHertz start, last;
    } bands[] = {{KiloHertz{2'407'000}, KiloHertz{2'999'999}},
                 {KiloHertz{5'000'000}, KiloHertz{5'999'999}},
                 {KiloHertz{5'950'000}, KiloHertz{7'125'000}}};
    return (channel == 14 && frequency == KiloHertz{2'484'000}) ||
           std::ranges::any_of(bands, [&](const auto& band) {
               return frequency <= band.last &&
                      frequency == channel_to_frequency(band.start, channel);
           });
}

bool has_both(const ChannelStateBits& state, ChannelStateBit a, ChannelStateBit b) {
    return state[static_cast<std::size_t>(a)] && state[static_cast<std::size_t>(b)];
}

/// Place of the primary channel among the 20 MHz channels of the segment, counted from below.
std::optional<std::size_t> primary_index(KiloHertz primary, const ChannelSegment& segment) {
    constexpr std::int64_t channel = 20'000;  // kHz
    const std::int64_t width =
        std::int64_t{channel_width_to_frequency(segment.width).count()} * 1'000;
    const std::int64_t offset =
        std::int64_t{primary.count()} - segment.center_frequency.count() + (width - channel) / 2;
    if (offset < 0 || offset >= width || offset % channel != 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(offset / channel);
}

/// What is wrong with the info; nothing if it is sound.
std::optional<std::string> fault_of(const ChannelInfo& info) {
    const auto fault = [&info](const char* before, const char* after) {
        return before + info.to_string() + after;
    };
    if (!global().opclass_deducible_from_channel_info(info)) {
        return fault("Error getting operating class of ChannelInfo ", "");
    }
    const auto opclasses = global().get_opclasses_from_channel_info(info);
    const std::uint8_t opclass = opclasses[0];
    const KiloHertz primary = info.get_primary_frequency().get();
    const std::uint8_t channel = global().get_channel_from_frequency(primary, opclass);
    if (info.get_primary_segment().is_set()) {
        const ChannelSegment& segment = info.get_primary_segment().get();
        const auto count =
            static_cast<std::size_t>(channel_width_to_frequency(segment.width).count()) / 20;
        if ((segment.puncturing_map >> count).any()) {
            return fault("ChannelInfo ",
                         " puncturing map has punctured sub-channels exceeding current channel "
                         "width.");
        }
        const auto index = primary_index(primary, segment);
        if (index && segment.puncturing_map[*index]) {
            return fault("ChannelInfo ", " has a punctured primary channel.");
        }
        const auto centers = global().get_opclass_center_frequencies(opclass);
        if (std::ranges::count(centers, segment.center_frequency) == 0) {
            return fault("Channel Info ", " has invalid primary segment center");
        }
    }
    if (!global().get_all_opclass_channels(opclass).contains(channel)) {
        return std::to_string(primary.count()) + " kHz is no valid primary frequency in opclass " +
               std::to_string(opclass);
    }
    if (opclasses.size() > 1) {
        const auto centers = global().get_opclass_center_frequencies(opclasses[1]);
        if (std::ranges::count(centers, info.get_secondary_center_frequency()) == 0) {
            return fault("Channel Info ", " has invalid secondary segment center");
        }
    }
    return std::nullopt;
}

}  // namespace

bool is_valid(const MACAddress& address) noexcept { return is_valid_mac_address(address); }

bool is_valid(const NSSTable& table) noexcept {
    return table.get_max_streams() >= 1 && table.get_max_streams() <= 8;
}

bool is_valid_global_operating_class(std::uint8_t opclass) {
    return global().get_all_region_opclasses().contains(opclass);
}

bool is_valid_global_operating_class_channelset(std::uint8_t opclass, const ChannelSet& channels) {
    return is_valid_global_operating_class(opclass) &&
           std::ranges::all_of(channels, [&](std::uint8_t channel) {
               return global().get_all_opclass_channels(opclass).contains(channel);
           });
}

bool is_valid_global_operating_class_center_channelset(std::uint8_t opclass,
                                                       const ChannelSet& channels) {
    return is_valid_global_operating_class(opclass) &&
           has_frequencies(opclass, channels, global().get_opclass_center_frequencies(opclass));
}

bool is_valid_global_operating_class_definition_channelset(std::uint8_t opclass,
                                                           const ChannelSet& channels) {
    return is_valid_global_operating_class(opclass) &&
           has_frequencies(opclass, channels,
                           global().get_opclass_definition_channel_frequencies(opclass));
}

bool is_valid(const ChannelEntry& entry) {
    using enum ChannelStateBit;
    if (entry.get_channel() == 0) {
        return false;
    }
    if (!matches(entry.get_channel(), entry.get_frequency())) {
        // The second blank behind "and" is known to those who match this line.
        NUV_LOG(log_module, warn) << "Frequency value and channel index does not seem to match: "
                                  << entry.get_frequency().count() / 1'000 << " MHz"
                                  << " and  " << int{entry.get_channel()};
        return false;
    }
    if (entry.get_capability_flags().none()) {
        NUV_LOG(log_module, warn) << "HW Flags invalid: All zero";
        return false;
    }
    const ChannelStateBits& state = entry.get_state_flags().get();
    if (has_both(state, DFS_CLEAR, RADAR_FOUND) || has_both(state, CAC_RUNNING, PRECAC_TODO)) {
        NUV_LOG(log_module, warn) << "ChannelStateBits contradictory (" << state << ')';
        return false;
    }
    const auto& utilization = entry.get_channel_utilization();
    if (utilization.is_set() && !is_valid_channel_utilization(utilization.get())) {
        NUV_LOG(log_module, warn) << "Invalid channel utilization channel entry";
        return false;
    }
    if (entry.get_anpi().is_set() && !is_valid_anpi(entry.get_anpi().get())) {
        NUV_LOG(log_module, warn) << "Invalid ANPI in channel entry";
        return false;
    }
    if (!global().opclass_deducible_from_channel_entry(entry)) {
        NUV_LOG(log_module, warn) << "Channel Entry does not belong to any operating class";
        return false;
    }
    return true;
}

bool is_valid(const ChannelList& list) {
    return std::ranges::all_of(list.get_channels(),
                               [](const ChannelEntry& entry) { return is_valid(entry); });
}

bool is_valid(const ChannelInfo& info) {
    const auto fault = fault_of(info);
    if (fault) {
        NUV_LOG(log_module, warn) << *fault;
    }
    return !fault;
}

}  // namespace nuv
