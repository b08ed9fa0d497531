// SPDX-License-Identifier: Apache-2.0
#include "nuv/async.hpp"

#include "nuv/time/timer_error.hpp"
#include "nuv_platform/csock.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv::async {
namespace {

using namespace std::chrono_literals;

std::string journal;
std::string taken() { return std::exchange(journal, ""); }

class TestTask : public Task {
public:
    explicit TestTask(std::chrono::milliseconds timeout = {}) : Task(timeout) {}
    TestTask(TestTask&&) = default;
    TestTask& operator=(TestTask&&) = default;

    void reset_impl() override { journal += "reset "; }
    void cancel() override { set_state(TaskState::CANCELLED); }
    bool has_value() const override { return get_state() == TaskState::COMPLETE_WITH_VALUE; }
    bool has_exception() const override { return false; }
    std::exception_ptr get_exception() const override { return nullptr; }
    void on_started() override { journal += "started "; }
    void on_done(TaskState state) override {
        journal += "done:" + task_state_to_string(state) + " ";
    }
    void on_timeout() override {
        journal += "timeout ";
        set_state(TaskState::TIMEOUT);
    }
};

class TaskTest : public testing::Test {
protected:
    TaskTest() { csock_init(); }
    ~TaskTest() override { csock_exit(); }
    platform::FakePlatform fake;
};

std::string refusal(auto&& call) {
    try {
        call();
    } catch (const TaskError& error) {
        return std::to_string(error.code().value()) + " " + error.what();
    }
    return "";
}

TEST_F(TaskTest, GoesThroughItsStatesOnce) {
    TestTask task;
    EXPECT_EQ(task.get_state(), TaskState::NEVER_STARTED);
    task.start();
    EXPECT_EQ(fake.loop().armed_timers(), 0U);
    EXPECT_EQ(task.get_remaining_time(), 0ms);
    EXPECT_EQ(refusal([&] { task.start(); }),
              "3 Task has already been started!: Task already running");
    task.set_state(TaskState::COMPLETE_WITH_VALUE);
    task.set_state(TaskState::CANCELLED);
    EXPECT_EQ(taken(), "started done:COMPLETE_WITH_VALUE ");
    EXPECT_EQ(refusal([&] { task.start(); }),
              "3 Task has already been started!: Task already running");
    task.reset();
    EXPECT_EQ(task.get_state(), TaskState::NEVER_STARTED);
    task.start();
    EXPECT_EQ(taken(), "reset started ");
}

TEST_F(TaskTest, EndsByItsTimeLimitOrStopsIt) {
    TestTask task(-5ms);
    task.set_timeout(20ms);
    EXPECT_EQ(refusal([&] { task.get_remaining_time(); }),
              "4 Task is not running!: Task not running");
    task.start();
    EXPECT_EQ(task.get_remaining_time(), 20ms);
    EXPECT_EQ(refusal([&] { task.set_timeout(1ms); }),
              "5 Running task cannot be moved!: Task is running");
    csock_select_with_msecs(-1);
    task.set_state(TaskState::COMPLETE_WITH_VALUE);
    EXPECT_EQ(taken(), "started timeout done:TIMEOUT ");

    task.reset();
    task.start();
    EXPECT_EQ(fake.loop().armed_timers(), 1U);
    task.cancel();
    EXPECT_EQ(fake.loop().armed_timers(), 0U);
    task.reset();
    fake.loop().fail_next("ctimer_setup_internal", -2);
    EXPECT_THROW(task.start(), time::TimerError);
    EXPECT_EQ(task.get_state(), TaskState::NEVER_STARTED);
    taken();
}

TEST_F(TaskTest, MovesUnlessOneOfThemRuns) {
    const auto outlived = std::make_shared<int>();
    TestTask from(30ms);
    TestTask to;
    from.then([](Task&) { journal += "from "; });
    to.then([outlived](Task&) { journal += "to "; });
    to = std::move(from);
    EXPECT_EQ(outlived.use_count(), 1);
    EXPECT_EQ(to.get_timeout(), 30ms);
    to.start();
    const std::string text = "5 Cannot assign to or from running task!: Task is running";
    // NOLINTNEXTLINE(bugprone-use-after-move): a moved-from task is an idle one
    EXPECT_EQ(refusal([&] { from = std::move(to); }), text);
    EXPECT_EQ(refusal([&] { to = TestTask(); }), text);
    EXPECT_EQ(refusal([&] { TestTask(std::move(to)); }), text);
    taken();
    to.cancel();
    EXPECT_EQ(taken(), "done:CANCELLED from ");
}

TEST_F(TaskTest, AContinuationMayUseResetAndDestroyItsTask) {
    auto task = std::make_unique<TestTask>();
    EXPECT_EQ(refusal([&] { task->remove_continuation(); }),
              "6 Task is not continued!: Task has no continuation");
    EXPECT_EQ(refusal([&] { task->set_continuation(nullptr); }),
              "8 Continuation is empty!: Task composition invalid");
    int runs = 0;
    task->then([&](Task& own) {
        EXPECT_FALSE(own.has_continuation());
        if (++runs == 1) {
            own.reset();
            own.start();
        } else if (runs == 3) {
            own.then([&](Task&) { task.reset(); });
        }
    });
    EXPECT_EQ(refusal([&] { task->then([](Task&) {}); }),
              "7 Task is already continued!: Task has a continuation");
    task->start();
    task->cancel();
    EXPECT_TRUE(task->is_running() && task->has_continuation());
    task->cancel();
    task->cancel();
    EXPECT_EQ(runs, 2);
    for (int i = 0; i < 2; ++i) {
        ASSERT_NE(task, nullptr);
        task->reset();
        task->start();
        task->cancel();
    }
    EXPECT_EQ(task, nullptr);
    taken();
}

TEST_F(TaskTest, DestroyedWhileItRunsItIsDeleted) {
    TaskState seen{};
    {
        TestTask task(1s);
        task.then([&](Task& own) {
            seen = own.get_state();
            EXPECT_EQ(dynamic_cast<TestTask*>(&own), nullptr);
        });
        task.start();
    }
    EXPECT_EQ(seen, TaskState::DELETED);
    EXPECT_EQ(taken(), "started ") << "the concrete part is gone";
    EXPECT_EQ(fake.loop().armed_timers(), 0U);
}

TEST(TaskErrc, MessagesAndConditions) {
    const struct {
        const char* message;
        int condition;
    } rows[] = {{"(unrecognised error)", 0},      {"Task timed out", ETIMEDOUT},
                {"Task cancelled", ECANCELED},    {"Task already running", EINPROGRESS},
                {"Task not running", EAGAIN},     {"Task is running", EAGAIN},
                {"Task has no continuation", 95}, {"Task has a continuation", 95},
                {"Task composition invalid", 95}, {"(unrecognised error)", 9}};
    for (int value = 0; value < 10; ++value) {
        const std::error_code code = make_error_code(static_cast<TaskErrc>(value));
        EXPECT_EQ(code.message(), rows[value].message);
        EXPECT_EQ(code.default_error_condition().value(), rows[value].condition);
        EXPECT_EQ(code.default_error_condition().category() == std::generic_category(),
                  value >= 1 && value <= 8);
    }
    EXPECT_STREQ(task_error_category().name(), "Task");
}

TEST(TaskState, TextsAndEnd) {
    const std::string texts[] = {
        "NEVER_STARTED",           "RUNNING", "CANCELLED", "COMPLETE_WITH_VALUE",
        "COMPLETE_WITH_EXCEPTION", "TIMEOUT", "DELETED",   "INVALID"};
    for (unsigned value = 0; value < 256; ++value) {
        const auto state = static_cast<TaskState>(value);
        EXPECT_EQ(task_state_to_string(state), texts[std::min(value, 7U)]);
        EXPECT_EQ((std::ostringstream() << state).str(), texts[std::min(value, 7U)]);
        EXPECT_EQ(task_state_is_done(state), value >= 2 && value <= 6);
    }
}

}  // namespace
}  // namespace nuv::async
