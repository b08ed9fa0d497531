// SPDX-License-Identifier: Apache-2.0
#include "nuv/state_machine/state_machine.hpp"

#include <stdexcept>

#include "nuv/logging/clogmod_proxy.hpp"
#include "nuv/state_machine/i_state.hpp"

namespace nuv::state_machine {

namespace {

/// A variable that is changed for as long as this object lives.
template <typename T>
class Changed {
public:
    Changed(T& variable, T value) : variable_(variable), before_(variable) { variable = value; }
    Changed(const Changed&) = delete;
    Changed& operator=(const Changed&) = delete;
    ~Changed() { variable_ = before_; }

private:
    T& variable_;
    T before_;
};

}  // namespace

Event::~Event() = default;

StateMachine::StateMachine() = default;

StateMachine::~StateMachine() { deinit(); }

void StateMachine::on_event(const Event& event) {
    if (current_ == nullptr) {
        constexpr const char* TEXT = "Dispatching Event on uninitialised State Machine!";
        // The record's line is a fixed number: collectors match on it.
        logging::ClogmodProxy("state_machine")
                .get_ostream(0, "src/shared/state_machine/state_machine", "on_event", 40)
            << TEXT;
        throw std::runtime_error(TEXT);
    }
    struct Handling {
        explicit Handling(StateMachine& handling) : machine(handling) { ++machine.events_; }
        Handling(const Handling&) = delete;
        Handling& operator=(const Handling&) = delete;
        ~Handling() {
            if (--machine.events_ == 0) {
                machine.retired_.clear();
            }
        }
        StateMachine& machine;
    } const handling(*this);
    current_->on_event(event);
}

void StateMachine::deinit() { leave(); }

StateMachine::Retired StateMachine::leave() {
    if (switching_) {
        throw std::logic_error("a state was to be left while one is being entered or left");
    }
    if (current_ != nullptr) {
        retired_.reserve(retired_.size() + 1);
        const Changed switching(switching_, true);
        current_->on_exit();
        current_->set_entered(false);
    }
    return {*this, std::move(current_)};
}

void StateMachine::enter(std::unique_ptr<IState> state) {
    current_ = std::move(state);
    const Changed switching(switching_, true);
    current_->set_entered(true);
    current_->on_entry();
}

StateMachine::Retired::Retired(StateMachine& machine, std::unique_ptr<IState> state) noexcept
    : machine_(machine), state_(std::move(state)) {}

StateMachine::Retired::~Retired() {
    if (machine_.events_ > 0 && state_ != nullptr) {
        machine_.retired_.push_back(std::move(state_));  // leave() made room
    }
}

}  // namespace nuv::state_machine
