// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace nuvctl {

/// When a frame was captured.
struct Timestamp {
    std::int64_t seconds = 0;       ///< since 1970-01-01 00:00 UTC
    std::int32_t microseconds = 0;  ///< 0 to 999,999
};

/// RFC 3339, UTC, all digits of the microseconds: 2015-11-03T12:34:56.123456Z. None outside the years
/// 0 to 9999.
std::optional<std::string> to_string(const Timestamp& time);
/// Seconds and microseconds as one number, any value: 1446554096.123456, -0.500000.
std::string raw_text(const Timestamp& time);
/// Reads exactly that form; none for anything else.
std::optional<Timestamp> parse_timestamp(const std::string& text);

}  // namespace nuvctl
