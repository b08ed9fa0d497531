// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "nuv/type_with_ratio.hpp"

namespace nuv::impl {

inline constexpr std::int32_t START_60_GHZ = 56'160'000;  // kHz

/// From the frequency of a channel number to that of the next, in kHz, in a class or band that
/// starts at `start` (IEEE 802.11-2020, Annex E).
constexpr std::int32_t channel_step(KiloHertz start) {
    return start.count() < START_60_GHZ ? 5'000 : 2'160'000;
}

}  // namespace nuv::impl
