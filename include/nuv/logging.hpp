// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// Logging through streams, and the configuration of loggers.

#include "nuv/logging/chunk_io_manipulator.hpp"
#include "nuv/logging/clog_adapter.hpp"
#include "nuv/logging/clog_adapter_base.hpp"
#include "nuv/logging/clog_stream_buf.hpp"
#include "nuv/logging/clogger_proxy.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "nuv/logging/string_to_logmask.hpp"
