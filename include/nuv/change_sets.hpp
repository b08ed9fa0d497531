// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// Change sets, and the data containers that report their differences.

#include "nuv/aggregate_diffable_data_container.hpp"
#include "nuv/change_set.hpp"
#include "nuv/change_set_category.hpp"
#include "nuv/change_set_value.hpp"
#include "nuv/cloneable.hpp"
#include "nuv/diffable_data_container.hpp"
