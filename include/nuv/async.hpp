// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// Tasks, and the pool of futures that the main loop polls.

#include "nuv/async/future_connection.hpp"
#include "nuv/async/future_pool.hpp"
#include "nuv/async/future_wrapper_base.hpp"
#include "nuv/async/task.hpp"
#include "nuv/async/task_errc.hpp"
#include "nuv/async/task_error.hpp"
#include "nuv/async/task_interface.hpp"
#include "nuv/async/task_state.hpp"
