// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <system_error>
#include <type_traits>
#include <utility>

#include "nuv/export.hpp"
#include "nuv_platform/ctimer.h"

namespace nuv::time {

class Timer;

/// The platform's part of a timer, which stays where it is while the timer moves.
class NUV_EXPORT NativeHandleContainerBase {
public:
    virtual ~NativeHandleContainerBase();
};
template <typename Handle>
class NativeHandleContainer final : public NativeHandleContainerBase {
public:
    Handle handle{};  ///< begins filled with zeros
};

/// What runs when the timer ends.
class NUV_EXPORT TimerCallbackWrapperBase {
public:
    virtual ~TimerCallbackWrapperBase();
    virtual void operator()() = 0;
};
template <typename Function>
class TimerCallbackWrapper final : public TimerCallbackWrapperBase {
public:
    template <typename F>
    explicit TimerCallbackWrapper(std::in_place_t /*tag*/, F&& function)
        : function_(std::forward<F>(function)) {}
    void operator()() override { std::invoke(function_); }

private:
    Function function_;
};

/// Where the platform's callback finds the timer; stays where it is while the timer moves.
struct TimerCbdataWrapper {
    Timer* timer = nullptr;
};

/// The durations that the platform's timers know, and their units in a second.
template <typename Period>
inline constexpr std::uint32_t TIMER_UNITS_PER_SECOND = 0;
template <>
inline constexpr std::uint32_t TIMER_UNITS_PER_SECOND<std::milli> = 1000;
template <>
inline constexpr std::uint32_t TIMER_UNITS_PER_SECOND<std::centi> = 100;
template <>
inline constexpr std::uint32_t TIMER_UNITS_PER_SECOND<std::deci> = 10;
template <>
inline constexpr std::uint32_t TIMER_UNITS_PER_SECOND<std::ratio<1>> = 1;

/// A timer that fires once, inside the wait of the main loop and on its thread, from which all calls
/// come. A periodic timer is one that its own callback starts again. Of a duration the low 32 bits of
/// the count are used: one of -1 ms is 49.7 days.
///
/// The callback must not throw: an exception that leaves it ends the process. It may start, stop,
/// move and destroy its timer.
class NUV_EXPORT Timer {
public:
    Timer();
    // NOLINTBEGIN(performance-noexcept-move-constructor): a timer always has a handle
    /// The timer takes over `other`, running as it is; `other` is idle then.
    Timer(Timer&& other);
    /// The same; what this timer did before ends.
    Timer& operator=(Timer&& other);
    // NOLINTEND(performance-noexcept-move-constructor)
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    /// Stops. A failure is logged.
    ~Timer();

    /// Exchanges the timers: each goes on under the other's name.
    void swap(Timer& other) noexcept;

    /// Stops, and calls `function` once after `duration`: milliseconds, hundredths or tenths of a
    /// second, or seconds. Throws TimerError; the timer is idle then, and the former callback gone.
    template <std::integral Rep, typename Period, typename Function>
    requires(TIMER_UNITS_PER_SECOND<Period> != 0) &&
        std::invocable<std::decay_t<Function>&> void start(
            std::chrono::duration<Rep, Period> duration, Function&& function) {
        using Wrapper = TimerCallbackWrapper<std::decay_t<Function>>;
        auto callback = std::make_shared<Wrapper>(std::in_place, std::forward<Function>(function));
        stop();
        start_ctimer(duration);
        callback_ = std::move(callback);
    }

    /// Arms the platform's timer and leaves the callback as it is. Throws TimerError.
    template <std::integral Rep, typename Period>
    requires(TIMER_UNITS_PER_SECOND<Period> !=
             0) void start_ctimer(std::chrono::duration<Rep, Period> duration) {
        arm(static_cast<std::uint32_t>(duration.count()), TIMER_UNITS_PER_SECOND<Period>);
    }

    /// Does nothing when idle; a callback that has run is kept then. Throws TimerError.
    void stop();
    /// The same; stores how it went instead of throwing.
    void stop(std::error_code& error) noexcept;

    /// From start to when the callback is about to run, or stop.
    bool is_running() const noexcept { return handle_->handle.active != 0; }

    /// Milliseconds, negative when overdue. Throws TimerError when the timer is idle.
    std::chrono::milliseconds get_remaining_time() const;

    /// Runs the callback, if there is one.
    void trigger_callback();

    /// What the platform calls at the end; `cbdata` is a TimerCbdataWrapper.
    template <typename Handle>
    static void ctimer_callback(Handle* /*handle*/, void* cbdata) noexcept {
        if (Timer* const timer = static_cast<TimerCbdataWrapper*>(cbdata)->timer) {
            timer->trigger_callback();
        }
    }

private:
    void arm(std::uint32_t count, std::uint32_t units_per_second);

    std::unique_ptr<NativeHandleContainer<ctimerhandle>> handle_;
    std::shared_ptr<TimerCallbackWrapperBase> callback_;
    std::unique_ptr<TimerCbdataWrapper> cbdata_;
};

inline void swap(Timer& a, Timer& b) noexcept { a.swap(b); }

}  // namespace nuv::time
