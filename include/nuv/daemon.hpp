// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// The main loop of a daemon, its descriptor watches and debug commands, and the event bus.

#include "nuv/aicmd.hpp"
#include "nuv/aicmd_module.hpp"
#include "nuv/event_bus.hpp"
#include "nuv/i_event_module.hpp"
#include "nuv/i_fd_watch_base.hpp"
#include "nuv/i_generic_fd_watch.hpp"
#include "nuv/i_simple_fd_watch.hpp"
#include "nuv/i_watch_base.hpp"
#include "nuv/mainloop.hpp"
