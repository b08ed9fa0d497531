// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {

inline constexpr std::int64_t NEVER = ChannelEntry::Power::NEVER_SET;

/// A channel with these capabilities; the rest was never set.
inline ChannelEntry channel(std::uint8_t number, std::int32_t khz,
                            const ChannelCapabilityBits& capabilities = 1) {
    return {number, KiloHertz{khz}, capabilities, {}, {}, {}, {}, {}};
}

/// Reads primary frequency and center in kHz, "-" for what was never set; of a segment also width, as
/// "80+80", puncturing map in 16 digits, secondary center.
inline ChannelInfo read_channel_info(std::istream& is) {
    ChannelInfo info;
    std::string primary;
    std::string center;
    is >> primary >> center;
    if (primary != "-") {
        info.set_primary_frequency({KiloHertz{std::stoi(primary)}, 1});
    }
    if (center != "-") {
        ChannelSegment segment{KiloHertz{std::stoi(center)}, ChannelWidth::INVALID, {}};
        std::string width;
        int secondary = 0;
        is >> width >> segment.puncturing_map >> secondary;
        string_to_enum(width + " MHz", segment.width);
        info.set_segment({segment, 1}, KiloHertz{secondary});
    }
    return info;
}

/// `message` with {} in place of the text of `info`.
inline std::string without_info(std::string message, const ChannelInfo& info) {
    std::ostringstream os;
    os << info;
    const std::size_t at = message.find(os.str());
    return at == std::string::npos ? message : message.replace(at, os.str().size(), "{}");
}

}  // namespace nuv::test
