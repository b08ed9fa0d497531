// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// Signals, and connections to their slots.

#include "nuv/signals/connection.hpp"
#include "nuv/signals/scoped_connection.hpp"
#include "nuv/signals/signal.hpp"
#include "nuv/signals/slot_base.hpp"
