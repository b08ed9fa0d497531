// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <utility>

#include "nuv/export.hpp"

namespace nuv {

/// Reads the platform's monotonic clock anew: nanoseconds, on Linux those of
/// std::chrono::steady_clock.
NUV_EXPORT std::int64_t steady_now_ns() noexcept;

/// The time stamp tells when the value last changed.
struct LastChangedStrategy {
    /// Whether a value that is set here and now is stored. NaN differs from everything.
    static bool stores(const auto& ours, const auto& value) {
        return !ours.is_set() || !(ours.get() == value);
    }
    /// Whether a value from elsewhere replaces ours.
    static bool takes(const auto& ours, const auto& theirs) {
        return theirs.get_timestamp() > ours.get_timestamp() && stores(ours, theirs.get());
    }
};

/// The time stamp tells when the value was last reported, be it the same one.
struct LastUpdatedStrategy {
    static bool stores(const auto&, const auto&) { return true; }
    static bool takes(const auto& ours, const auto& theirs) {
        return theirs.get_timestamp() > ours.get_timestamp();
    }
};

/// The first value stays, whatever the time.
struct SetOnceStrategy {
    static bool stores(const auto& ours, const auto&) { return !ours.is_set(); }
    static bool takes(const auto& ours, const auto& theirs) {
        return !ours.is_set() && theirs.is_set();
    }
};

/// A value and the moment at which it was set, in nanoseconds of the monotonic clock. `Strategy`
/// decides which of two sources wins. By default T() and never set.
template <typename T, typename Strategy>
class DynamicValue {
public:
    /// The time stamp of a value that was never set.
    static constexpr std::int64_t NEVER_SET = std::numeric_limits<std::int64_t>::min();

    constexpr DynamicValue() = default;
    constexpr DynamicValue(T value, std::int64_t timestamp)
        : value_(std::move(value)), timestamp_(timestamp) {}

    constexpr const T& get() const noexcept { return value_; }
    constexpr std::int64_t get_timestamp() const noexcept { return timestamp_; }
    constexpr bool is_set() const noexcept { return timestamp_ != NEVER_SET; }

    /// Stores `value` with the current time if the strategy stores it.
    void set(T value) {
        if (Strategy::stores(*this, value)) {
            set(std::move(value), steady_now_ns());
        }
    }
    /// Stores both as they are.
    void set(T value, std::int64_t timestamp) {
        value_ = std::move(value);
        timestamp_ = timestamp;
    }
    void reset() { *this = DynamicValue(); }

    /// Takes value and time stamp of `other` if the strategy does; tells whether.
    bool update(const DynamicValue& other) {
        const bool takes = can_update_from(other);
        if (takes) {
            *this = other;
        }
        return takes;
    }
    bool can_update_from(const DynamicValue& other) const { return Strategy::takes(*this, other); }

    /// Both never set, or both set to equal values, whenever that was.
    bool equivalent_to(const DynamicValue& other) const {
        return is_set() == other.is_set() && (!is_set() || value_ == other.value_);
    }
    /// The same value and the same time stamp.
    bool operator==(const DynamicValue&) const = default;

private:
    T value_{};
    std::int64_t timestamp_ = NEVER_SET;
};

}  // namespace nuv
