// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "nuv/export.hpp"
#include "nuv/id.hpp"
#include "nuv/state_machine/state_machine.hpp"

namespace nuv::state_machine {

/// A state of a machine, which creates it.
class NUV_EXPORT IState {
public:
    IState(StateMachine& machine, const StateMachine::CreateToken& /*token*/) noexcept
        : machine_(machine) {}
    IState(const IState&) = delete;
    IState& operator=(const IState&) = delete;
    virtual ~IState();

    virtual std::string get_name() const = 0;
    virtual ID get_id() const = 0;
    virtual void on_entry();
    virtual void on_exit();
    virtual void on_event(const Event& event);

    /// Whether the machine has entered the state and not left it.
    bool is_entered() const noexcept { return entered_; }
    void set_entered(bool entered) noexcept { entered_ = entered; }
    StateMachine& get_state_machine() noexcept { return machine_; }
    const StateMachine& get_state_machine() const noexcept { return machine_; }

private:
    StateMachine& machine_;
    bool entered_ = false;
};

}  // namespace nuv::state_machine
