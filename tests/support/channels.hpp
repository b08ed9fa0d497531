// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/channel_info.hpp"
#include "nuv/wlan_radio.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {

inline constexpr std::int64_t NEVER = ChannelEntry::Power::NEVER_SET;

/// A channel with these capabilities; the rest was never set.
inline ChannelEntry channel(std::uint8_t number, std::int32_t khz,
                            const ChannelCapabilityBits& capabilities = 1) {
    return {number, KiloHertz{khz}, capabilities, {}, {}, {}, {}, {}};
}

}  // namespace nuv::test
