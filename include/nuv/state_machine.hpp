// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// A state machine that hands events to its current state.

#include "nuv/state_machine/i_state.hpp"
#include "nuv/state_machine/state_machine.hpp"
