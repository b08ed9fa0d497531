// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// One-shot timers on the thread of the main loop.

#include "nuv/time/timer.hpp"
#include "nuv/time/timer_errc.hpp"
#include "nuv/time/timer_error.hpp"
