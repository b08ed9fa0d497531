// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <memory>
#include <utility>
#include <vector>

#include "nuv/export.hpp"

namespace nuv::state_machine {

class IState;

/// What a machine is told; the events of a daemon derive from it.
class NUV_EXPORT Event {
public:
    Event() = default;
    Event(const Event&) = default;
    Event& operator=(const Event&) = default;
    virtual ~Event();
};

/// Hands events to its current state. For one thread.
class NUV_EXPORT StateMachine {
public:
    /// What a state's constructor takes, so that only machines create states.
    class CreateToken {
        friend StateMachine;
        CreateToken() = default;
    };

    StateMachine();
    StateMachine(const StateMachine&) = delete;
    StateMachine& operator=(const StateMachine&) = delete;
    /// As deinit(). Not while a state handles an event.
    virtual ~StateMachine();

    /// None before the first transition, and after deinit().
    const IState* get_current_state() const noexcept { return current_.get(); }
    IState* get_current_state() noexcept { return current_.get(); }

    /// Throws std::runtime_error when there is no current state.
    void on_event(const Event& event);

    /// Leaves the current state, if there is one, and enters a new `State(machine, token, args...)`:
    /// on_exit() of the old one, then creation and on_entry() of the new one. The old state is
    /// destroyed last; when its own on_event() asked for the transition, once that has returned.
    ///
    /// When the new state cannot be created there is no current state. Throws std::logic_error when
    /// called by on_entry() or on_exit().
    template <std::derived_from<IState> State, typename... Args>
    State& transition_to(Args&&... args) {
        const Retired old = leave();
        auto created = std::make_unique<State>(*this, CreateToken(), std::forward<Args>(args)...);
        State& state = *created;
        enter(std::move(created));
        return state;
    }

    /// Leaves the current state, if there is one, and enters none. As with a transition, a state that
    /// handles an event is destroyed when it has returned. Throws std::logic_error when called by
    /// on_entry() or on_exit().
    void deinit();

private:
    /// A state that was left: destroyed with this object, or after the event under way.
    class NUV_EXPORT Retired {
    public:
        Retired(StateMachine& machine, std::unique_ptr<IState> state) noexcept;
        Retired(const Retired&) = delete;
        Retired& operator=(const Retired&) = delete;
        ~Retired();

    private:
        StateMachine& machine_;
        std::unique_ptr<IState> state_;
    };

    Retired leave();
    void enter(std::unique_ptr<IState> state);

    std::unique_ptr<IState> current_;
    std::vector<std::unique_ptr<IState>> retired_;
    unsigned events_ = 0;  // under way
    bool switching_ = false;
};

}  // namespace nuv::state_machine
