// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/export.hpp"

/// The version of these headers, as Semantic Versioning counts. The build reads it from here.
///
/// The ABI rule: libraries of one MAJOR version, and while that is 0 of one MINOR version, are
/// interchangeable. The soname carries exactly that: libnuv.so.0.1, later libnuv.so.1.
#define NUV_VERSION_MAJOR 0
#define NUV_VERSION_MINOR 1
#define NUV_VERSION_PATCH 0
/// One number to compare in #if: 0.1.0 is 1000.
#define NUV_VERSION (NUV_VERSION_MAJOR * 1'000'000 + NUV_VERSION_MINOR * 1'000 + NUV_VERSION_PATCH)

namespace nuv {

/// NUV_VERSION of the library that the program runs with.
NUV_EXPORT int version() noexcept;

}  // namespace nuv
