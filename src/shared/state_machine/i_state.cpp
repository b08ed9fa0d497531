// SPDX-License-Identifier: Apache-2.0
#include "nuv/state_machine/i_state.hpp"

namespace nuv::state_machine {

IState::~IState() = default;
void IState::on_entry() {}
void IState::on_exit() {}
void IState::on_event(const Event& /*event*/) {}

}  // namespace nuv::state_machine
