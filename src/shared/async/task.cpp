// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/task.hpp"

#include "nuv/async/task_errc.hpp"
#include "nuv/async/task_error.hpp"

namespace nuv::async {

TaskInterface::~TaskInterface() = default;
TaskContinuationBase::~TaskContinuationBase() = default;

// NOLINTNEXTLINE(performance-noexcept-move-constructor): a running task refuses
Task::Task(Task&& other) { *this = std::move(other); }

// NOLINTNEXTLINE(performance-noexcept-move-constructor)
Task& Task::operator=(Task&& other) {
    if (is_running() || other.is_running()) {
        throw TaskError(TaskErrc::RUNNING, "Cannot assign to or from running task!");
    }
    if (this != &other) {
        timer_ = std::move(other.timer_);
        state_ = other.state_;
        timeout_ = other.timeout_;
        continuation_ = std::move(other.continuation_);
    }
    return *this;
}

Task::~Task() {
    bool* const noticed_by = destroyed_;
    set_state(TaskState::DELETED);
    if (noticed_by != nullptr) {
        *noticed_by = true;
    }
}

void Task::start() {
    if (state_ != TaskState::NEVER_STARTED) {
        throw TaskError(TaskErrc::ALREADY_RUNNING, "Task has already been started!");
    }
    if (timeout_.count() > 0) {
        timer_.start(timeout_, [this] { on_timeout(); });
    }
    set_state(TaskState::RUNNING);
    on_started();
}

void Task::set_state(TaskState state) noexcept {
    const bool ends = !is_done() && task_state_is_done(state);
    state_ = state;
    if (ends) {
        done(state);
    }
}

void Task::done(TaskState state) noexcept {
    if (state != TaskState::TIMEOUT) {
        std::error_code ignored;
        timer_.stop(ignored);
    }
    bool destroyed = false;
    bool* const outer = std::exchange(destroyed_, &destroyed);
    on_done(state);  // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall): ~Task wants its own
    if (!destroyed) {
        // Moved out: it may give the task another one, or destroy it.
        if (auto continuation = std::move(continuation_)) {
            (*continuation)(*this);
            if (!destroyed && continuation_ == nullptr) {
                continuation_ = std::move(continuation);
            }
        }
    }
    if (!destroyed) {
        destroyed_ = outer;
    } else if (outer != nullptr) {
        *outer = true;
    }
}

void Task::reset() {
    reset_impl();
    state_ = TaskState::NEVER_STARTED;
}

void Task::set_timeout(std::chrono::milliseconds timeout) {
    if (is_running()) {
        throw TaskError(TaskErrc::RUNNING, "Running task cannot be moved!");
    }
    timeout_ = timeout;
}

std::chrono::milliseconds Task::get_remaining_time() const {
    if (!is_running()) {
        throw TaskError(TaskErrc::NOT_RUNNING, "Task is not running!");
    }
    return timer_.is_running() ? timer_.get_remaining_time() : std::chrono::milliseconds(0);
}

void Task::set_continuation(std::unique_ptr<TaskContinuationBase> continuation) {
    if (continuation == nullptr) {
        throw TaskError(TaskErrc::COMPOSITION_INVALID, "Continuation is empty!");
    }
    if (has_continuation()) {
        throw TaskError(TaskErrc::HAS_CONTINUATION, "Task is already continued!");
    }
    continuation_ = std::move(continuation);
}

void Task::remove_continuation() {
    if (!has_continuation()) {
        throw TaskError(TaskErrc::NO_CONTINUATION, "Task is not continued!");
    }
    continuation_.reset();
}

void Task::on_started() {}
void Task::on_done(TaskState /*state*/) {}

}  // namespace nuv::async
