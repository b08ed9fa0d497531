// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>

#include "nuv/export.hpp"

namespace nuv::serialization {

/// What is written as a JSON integer and read from one: every integer type except bool and char.
/// A concept instead of a list of overloads, because which of `long` and `long long` is
/// std::int64_t, and whether the other one is left over, differs between machines.
template <typename T>
concept JSONInteger = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char>;

}  // namespace nuv::serialization
