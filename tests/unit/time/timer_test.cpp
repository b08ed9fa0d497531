// SPDX-License-Identifier: Apache-2.0
#include "nuv/time.hpp"

#include "nuv_platform/csock.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv::time {
namespace {

using namespace std::chrono_literals;
using platform::FakePlatform;
using Deci = std::chrono::duration<std::int64_t, std::deci>;
using Centi = std::chrono::duration<std::int32_t, std::centi>;

template <typename Duration>
concept Startable = requires(Timer timer, Duration duration) {
    timer.start(duration, [] {});
};
static_assert(Startable<std::chrono::milliseconds> && Startable<Deci> && Startable<Centi> &&
              Startable<std::chrono::seconds>);
static_assert(!Startable<std::chrono::minutes> && !Startable<std::chrono::microseconds>);
static_assert(!std::is_copy_constructible_v<Timer> && !std::is_copy_assignable_v<Timer>);

class TimerTest : public testing::Test {
protected:
    TimerTest() { csock_init(); }
    ~TimerTest() override { csock_exit(); }

    // Runs the loop until no timer is armed. Returns the virtual time that took.
    std::chrono::milliseconds run() {
        const auto begin = fake.clock().now();
        for (int i = 0; i < 100 && fake.loop().armed_timers() > 0; ++i) {
            EXPECT_EQ(csock_select_with_msecs(-1), 0);
        }
        EXPECT_EQ(fake.loop().armed_timers(), 0U);
        return std::chrono::round<std::chrono::milliseconds>(fake.clock().now() - begin);
    }

    FakePlatform fake;
    std::string fired;
    std::function<void()> fires(char letter) {
        return [this, letter] { fired += letter; };
    }
};

TEST_F(TimerTest, FiresOnceAfterItsDuration) {
    Timer timer;
    const auto after = [&](auto duration) {
        timer.start(duration, fires('t'));
        EXPECT_TRUE(timer.is_running());
        return run();
    };
    EXPECT_EQ(after(15ms), 15ms);
    EXPECT_EQ(after(Centi(3)), 30ms);
    EXPECT_EQ(after(Deci(2)), 200ms);
    EXPECT_EQ(after(7s), 7s);
    EXPECT_EQ(after(0s), 0s);
    EXPECT_EQ(after(std::chrono::milliseconds((std::int64_t{1} << 32) + 5)), 5ms);
    EXPECT_EQ(after(-1ms), 4'294'967'295ms);
    EXPECT_EQ(fired, "ttttttt");
    EXPECT_FALSE(timer.is_running());
}

TEST_F(TimerTest, RestartAndStopDropTheFormerCallback) {
    Timer timer;
    const auto owned = std::make_shared<int>();
    timer.start(5ms, [owned] { FAIL(); });
    timer.start(9ms, fires('n'));
    EXPECT_EQ(owned.use_count(), 1);
    EXPECT_EQ(run(), 9ms);
    EXPECT_EQ(fired, "n");
    timer.start(5ms, [owned] { FAIL(); });
    timer.stop();
    EXPECT_EQ(owned.use_count(), 1);
    timer.start(5ms, [owned] {});
    EXPECT_EQ(run(), 5ms);
    timer.stop();
    EXPECT_EQ(owned.use_count(), 2) << "an idle timer keeps the callback that has run";
}

TEST_F(TimerTest, ACallbackMayRestartMoveAndDestroyItsTimer) {
    auto timer = std::make_unique<Timer>();
    Timer other;
    timer->start(1s, [&, capture = std::string(40, 'x')] {
        timer->start(1s, [&, capture] {
            other = std::move(*timer);
            EXPECT_FALSE(timer->is_running());
            other.start(1s, [&, capture] {
                timer.reset();
                fired += capture[0];
            });
        });
    });
    EXPECT_EQ(run(), 3s);
    EXPECT_EQ(fired, "x");
}

TEST_F(TimerTest, ARunningTimerFollowsItsOwner) {
    Timer a;
    Timer b;
    a.start(1s, fires('a'));
    b.start(2s, fires('b'));
    swap(a, b);
    a.stop();
    EXPECT_EQ(run(), 1s);
    EXPECT_EQ(fired, "a");

    a.start(1s, fires('c'));
    Timer moved(std::move(a));
    // NOLINTNEXTLINE(bugprone-use-after-move): a moved-from timer is an idle one
    EXPECT_FALSE(a.is_running());
    b.start(2s, fires('d'));
    moved = std::move(b);
    EXPECT_EQ(fake.loop().armed_timers(), 1U) << "what the target did before ends";
    EXPECT_EQ(run(), 2s);
    EXPECT_EQ(fired, "ad");
}

TEST_F(TimerTest, RemainingTimeCountsDownBelowZero) {
    Timer timer;
    EXPECT_EQ(test::message_of<TimerError>([&] { timer.get_remaining_time(); }), "Not running");
    timer.start(1500ms, [] {});
    EXPECT_EQ(timer.get_remaining_time(), 1500ms);
    fake.clock().advance(2s);
    EXPECT_EQ(timer.get_remaining_time(), -500ms);
    timer.start(std::chrono::seconds(2'147'483), [] {});
    EXPECT_EQ(timer.get_remaining_time(), 2'147'483'000ms);
}

TEST_F(TimerTest, EachFailureOfThePlatformHasItsCode) {
    const struct {
        const char* call;
        int result;
        int code;  // 0: no failure
    } rows[] = {
        {"ctimer_setup_internal", -1, 3},    {"ctimer_setup_internal", -2, 7},
        {"ctimer_setup_internal", -3, 4},    {"ctimer_setup_internal", -4, 6},
        {"ctimer_setup_internal", -5, 0},    {"ctimer_setup_internal", 1, 0},
        {"ctimer_unsetup_internal", -1, 0},  {"ctimer_unsetup_internal", -2, 5},
        {"ctimer_unsetup_internal", -3, 4},  {"ctimer_unsetup_internal", -4, 6},
        {"ctimer_endtval_internal", -1, 2},  {"ctimer_endtval_internal", -2, 5},
        {"ctimer_endtval_internal", -3, 4},  {"ctimer_endtval_internal", -4, 0},
        {"ctimer_endtval_internal", -99, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.call) + " " + std::to_string(row.result));
        Timer timer;
        if (row.call != std::string("ctimer_setup_internal")) {
            timer.start(1s, [] {});
        }
        fake.loop().fail_next(row.call, row.result);
        std::error_code error;
        try {
            if (row.call == std::string("ctimer_setup_internal")) {
                timer.start(1s, [] {});
            } else if (row.call == std::string("ctimer_unsetup_internal")) {
                timer.stop();
            } else {
                timer.get_remaining_time();
            }
        } catch (const TimerError& failure) {
            error = failure.code();
            EXPECT_STREQ(failure.what(), error.message().c_str());
        }
        EXPECT_EQ(error.value(), row.code);
        EXPECT_TRUE(!error || &error.category() == &timer_error_category());
    }
}

TEST_F(TimerTest, AFailureInTheDestructorIsLogged) {
    {
        Timer timer;
        timer.start(1s, [] {});
        fake.loop().fail_next("ctimer_unsetup_internal", -2);
    }
    ASSERT_EQ(fake.log().records().size(), 1U);
    const auto record = fake.log().records()[0];
    EXPECT_EQ(record.text, "failed to stop timer (Timer:5: Deleted handle)");
    EXPECT_EQ(record.level, 0);
    EXPECT_EQ(record.module, "Timer");
    EXPECT_EQ(record.file, "src/shared/time/timer");
    EXPECT_EQ(record.function, "~Timer");
}

TEST(TimerErrc, MessagesAndConditions) {
    const char* const messages[] = {
        "(unrecognized error)", "Already running",  "Not running",
        "Invalid parameter",    "Invalid handle",   "Deleted handle",
        "Changed handle",       "Resource problem", "(unrecognized error)"};
    for (int value = 0; value < 9; ++value) {
        const std::error_code code = make_error_code(static_cast<TimerErrc>(value));
        EXPECT_EQ(code.message(), messages[value]);
        EXPECT_EQ(code == std::errc::invalid_argument, value == 3);
        EXPECT_EQ(code == std::errc::device_or_resource_busy, value == 7);
    }
    EXPECT_STREQ(timer_error_category().name(), "Timer");
    EXPECT_EQ(std::error_code(TimerErrc::NOT_RUNNING).value(), 2);
}

}  // namespace
}  // namespace nuv::time
