// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

#include "nuv/async/task_interface.hpp"
#include "nuv/async/task_state.hpp"
#include "nuv/export.hpp"
#include "nuv/time/timer.hpp"

namespace nuv::async {

class Task;

/// Runs once its task has ended. It may reset, start and destroy the task. One that throws ends the
/// process.
class NUV_EXPORT TaskContinuationBase {
public:
    virtual ~TaskContinuationBase();
    virtual void operator()(Task& task) = 0;
};

/// One piece of work that takes a while: its state, a time limit and what follows it. Concrete tasks
/// do the work and report its end by set_state(). For the thread of the main loop.
///
/// A task that is destroyed before its end becomes DELETED. Its concrete part is gone by then:
/// on_done() of this class runs, and the continuation sees a Task and nothing else. A concrete task
/// to which that matters ends itself in its own destructor.
class NUV_EXPORT Task : public TaskInterface {
public:
    ~Task() override;

    /// Throws TaskError unless the state is NEVER_STARTED, TimerError when a time limit cannot be
    /// set. With one, on_timeout() runs when it is over.
    void start();

    /// The first state that is done runs done(); any other is just stored.
    void set_state(TaskState state) noexcept;
    /// Stops the time limit, unless it has run out; then runs on_done(), then the continuation.
    void done(TaskState state) noexcept;

    void reset() override;

    TaskState get_state() const noexcept { return state_; }
    bool is_running() const noexcept { return state_ == TaskState::RUNNING; }
    bool is_done() const noexcept { return task_state_is_done(state_); }

    /// How long the task may run; 0 and less: as long as it takes.
    std::chrono::milliseconds get_timeout() const noexcept { return timeout_; }
    /// For the next start. Throws TaskError while the task runs.
    void set_timeout(std::chrono::milliseconds timeout);
    /// Of the time limit; 0 without one. Throws TaskError unless the task runs.
    std::chrono::milliseconds get_remaining_time() const;

    bool has_continuation() const noexcept { return continuation_ != nullptr; }
    /// Throws TaskError when there is one already, or for null.
    void set_continuation(std::unique_ptr<TaskContinuationBase> continuation);
    /// Throws TaskError when there is none.
    void remove_continuation();
    /// Sets `function` as continuation.
    template <std::invocable<Task&> Function>
    void then(Function&& function) {
        class Continuation final : public TaskContinuationBase {
        public:
            explicit Continuation(Function&& wanted) : function_(std::forward<Function>(wanted)) {}
            void operator()(Task& task) override { std::invoke(function_, task); }

        private:
            std::decay_t<Function> function_;
        };
        set_continuation(std::make_unique<Continuation>(std::forward<Function>(function)));
    }

protected:
    explicit Task(std::chrono::milliseconds timeout = {}) : timeout_(timeout) {}
    // NOLINTBEGIN(performance-noexcept-move-constructor): a running task refuses
    /// These throw TaskError when one of the tasks runs.
    Task(Task&& other);
    Task& operator=(Task&& other);
    // NOLINTEND(performance-noexcept-move-constructor)

    virtual void on_started();
    virtual void on_done(TaskState state);
    /// The time limit is over. The task goes on until its state says otherwise.
    virtual void on_timeout() = 0;

private:
    time::Timer timer_;
    std::chrono::milliseconds timeout_{};
    TaskState state_ = TaskState::NEVER_STARTED;
    std::unique_ptr<TaskContinuationBase> continuation_;
    bool* destroyed_ = nullptr;  // set when the task dies in done()
};

}  // namespace nuv::async
