// SPDX-License-Identifier: Apache-2.0
#pragma once

#if __cplusplus < 202002L
#error "nuv needs C++20: compile with -std=c++20 or later"
#endif

/// Marks what the shared library exports; everything else is hidden. Classes that are thrown,
/// caught or used through a base carry it as a whole, or `catch` and `dynamic_cast` would fail
/// across the library's border.
#define NUV_EXPORT __attribute__((visibility("default")))
