// SPDX-License-Identifier: Apache-2.0
#include "nuv/time/timer.hpp"

#include <initializer_list>

#include "internal/log_module.hpp"
#include "nuv/time/timer_errc.hpp"
#include "nuv/time/timer_error.hpp"

namespace nuv::time {

namespace {

constinit impl::LogModule log_module{"Timer", "src/shared/time/timer"};

/// `codes` are those of the platform's results -1, -2, ...; what is not there is success, and so is a
/// code of 0.
std::error_code to_error(int result, std::initializer_list<int> codes) noexcept {
    const auto index = static_cast<std::size_t>(-1 - static_cast<std::int64_t>(result));
    const int code = result < 0 && index < codes.size() ? codes.begin()[index] : 0;
    return code != 0 ? make_error_code(static_cast<TimerErrc>(code)) : std::error_code();
}

constexpr int SUCCESS = 0;
constexpr int NOT_RUNNING = static_cast<int>(TimerErrc::NOT_RUNNING);
constexpr int INVALID_PARAMETER = static_cast<int>(TimerErrc::INVALID_PARAMETER);
constexpr int INVALID_HANDLE = static_cast<int>(TimerErrc::INVALID_HANDLE);
constexpr int DELETED_HANDLE = static_cast<int>(TimerErrc::DELETED_HANDLE);
constexpr int CHANGED_HANDLE = static_cast<int>(TimerErrc::CHANGED_HANDLE);
constexpr int RESOURCE_PROBLEM = static_cast<int>(TimerErrc::RESOURCE_PROBLEM);

void throw_if(const std::error_code& error) {
    if (error) {
        throw TimerError(error);
    }
}

/// In 64 bits: a long of 32 bits would overflow after 35 minutes.
std::int64_t to_ms(const ctimer_tval& time) {
    return (std::int64_t{time.sec} * 1'000'000 + time.usec) / 1000;
}

}  // namespace

NativeHandleContainerBase::~NativeHandleContainerBase() = default;
TimerCallbackWrapperBase::~TimerCallbackWrapperBase() = default;

Timer::Timer()
    : handle_(std::make_unique<NativeHandleContainer<ctimerhandle>>()),
      cbdata_(std::make_unique<TimerCbdataWrapper>(TimerCbdataWrapper{this})) {}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): a timer always has a handle
Timer::Timer(Timer&& other) : Timer() { swap(other); }

// NOLINTNEXTLINE(performance-noexcept-move-constructor)
Timer& Timer::operator=(Timer&& other) {
    Timer taken(std::move(other));
    swap(taken);
    return *this;
}

Timer::~Timer() {
    std::error_code error;
    stop(error);
    if (error) {
        NUV_LOG(log_module, error) << "failed to stop timer (" << error.category().name() << ":"
                                   << error.value() << ": " << error.message() << ")";
    }
}

void Timer::swap(Timer& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(callback_, other.callback_);
    // The platform holds the cells' addresses, so what is in them follows the timers.
    std::swap(cbdata_, other.cbdata_);
    std::swap(*cbdata_, *other.cbdata_);
}

void Timer::arm(std::uint32_t count, std::uint32_t units_per_second) {
    const int result = ctimer_setup_internal(
        nullptr, &handle_->handle, CTIMER_TYPE_RELATIVE, 0, count, units_per_second,
        &Timer::ctimer_callback<ctimerhandle>, cbdata_.get(), 0, 0);
    throw_if(
        to_error(result, {INVALID_PARAMETER, RESOURCE_PROBLEM, INVALID_HANDLE, CHANGED_HANDLE}));
}

void Timer::stop(std::error_code& error) noexcept {
    error.clear();
    if (is_running()) {
        const int result = ctimer_unsetup_internal(&handle_->handle, CTIMER_TYPE_RELATIVE);
        error = to_error(result, {SUCCESS, DELETED_HANDLE, INVALID_HANDLE, CHANGED_HANDLE});
        // Last: what the callback owns may destroy this timer.
        const auto released = std::move(callback_);
    }
}

void Timer::stop() {
    std::error_code error;
    stop(error);
    throw_if(error);
}

std::chrono::milliseconds Timer::get_remaining_time() const {
    ctimer_tval now{};
    ctimer_tval end{};
    ctimer_elapsedtval(&now);
    const int result = ctimer_endtval_internal(&handle_->handle, CTIMER_TYPE_RELATIVE, &end);
    throw_if(to_error(result, {NOT_RUNNING, DELETED_HANDLE, INVALID_HANDLE, SUCCESS}));
    return std::chrono::milliseconds(to_ms(end) - to_ms(now));
}

void Timer::trigger_callback() {
    // A copy: the callback may start or destroy this timer.
    if (const auto callback = callback_) {
        (*callback)();
    }
}

}  // namespace nuv::time
