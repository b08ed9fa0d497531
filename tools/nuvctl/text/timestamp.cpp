// SPDX-License-Identifier: Apache-2.0
#include "text/timestamp.hpp"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace nuvctl {

namespace {

// Not std::time_t, which ends in 2038 where it has 32 bits.
using Seconds = std::chrono::sys_seconds;
using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year;

constexpr Seconds first_date = sys_days(year(0) / 1 / 1);
constexpr Seconds behind_last_date = sys_days(year(10'000) / 1 / 1);

}  // namespace

std::optional<std::string> to_string(const Timestamp& time) {
    const Seconds seconds{std::chrono::seconds(time.seconds)};
    if (seconds < first_date || seconds >= behind_last_date) {
        return std::nullopt;
    }
    const auto day = std::chrono::floor<days>(seconds);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(seconds - day);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%06dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), time.microseconds);
    return text.data();
}

std::string raw_text(const Timestamp& time) {
    std::int64_t seconds = time.seconds;
    std::int32_t microseconds = time.microseconds;
    if (seconds < 0 && microseconds > 0) {
        ++seconds;
        microseconds = 1'000'000 - microseconds;
    }
    std::array<char, 16> fraction{};
    std::snprintf(fraction.data(), fraction.size(), ".%06d", microseconds);
    return (time.seconds < 0 && seconds == 0 ? "-" : "") + std::to_string(seconds) +
           fraction.data();
}

std::optional<Timestamp> parse_timestamp(const std::string& text) {
    std::tm utc{};
    Timestamp time;
    const char* fraction = strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S.", &utc);
    if (fraction == nullptr) {
        return std::nullopt;
    }
    const Seconds day = sys_days(year(utc.tm_year + 1900) / (utc.tm_mon + 1) / utc.tm_mday);
    time.seconds = (day.time_since_epoch() + std::chrono::hours(utc.tm_hour) +
                    std::chrono::minutes(utc.tm_min) + std::chrono::seconds(utc.tm_sec))
                       .count();
    std::from_chars(fraction, text.data() + text.size(), time.microseconds);
    // Whatever is out of range or in another form comes out as another text.
    return to_string(time) == text ? std::optional(time) : std::nullopt;
}

}  // namespace nuvctl
