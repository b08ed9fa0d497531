// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// The whole daemon runtime.

#include "nuv/aggregate_diffable_data_container.hpp"
#include "nuv/change_set.hpp"
#include "nuv/change_set_category.hpp"
#include "nuv/change_set_value.hpp"
#include "nuv/cloneable.hpp"
#include "nuv/diffable_data_container.hpp"
#include "nuv/logging/chunk_io_manipulator.hpp"
#include "nuv/logging/clog_adapter.hpp"
#include "nuv/logging/clog_adapter_base.hpp"
#include "nuv/logging/clog_stream_buf.hpp"
#include "nuv/logging/clogger_proxy.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "nuv/logging/string_to_logmask.hpp"
