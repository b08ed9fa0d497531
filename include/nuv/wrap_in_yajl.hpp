// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <functional>
#include <string>
#include <utility>

#include "nuv/export.hpp"
#include "nuv/scoped_json.hpp"

namespace nuv::impl {

using serialization::YAJLStream;

/// Writes `name` as the key of a container ("object" or "array") and returns the prefix of the
/// messages about that container. Throws SerializationException.
NUV_EXPORT std::string write_wrapper_name(YAJLStream& stream, const std::string& container,
                                          const std::string& name);

}  // namespace nuv::impl

namespace nuv::serialization {

/// Calls `function` between the braces of an object, or the brackets of an array; in the second
/// form that is the value of the member `name`. Throws SerializationException where a writer
/// refuses, and lets through what `function` throws.
template <std::invocable Function>
void wrap_in_yajl_object(YAJLStream& stream, Function&& function) {
    const ScopedJSONObject object(stream, "Wrapping function call in object failed: ");
    std::invoke(std::forward<Function>(function));
}

template <std::invocable Function>
void wrap_in_yajl_object(YAJLStream& stream, const std::string& name, Function&& function) {
    const ScopedJSONObject object(stream, impl::write_wrapper_name(stream, "object", name));
    std::invoke(std::forward<Function>(function));
}

template <std::invocable Function>
void wrap_in_yajl_array(YAJLStream& stream, Function&& function) {
    const ScopedJSONArray array(stream, "Wrapping function call in array failed: ");
    std::invoke(std::forward<Function>(function));
}

template <std::invocable Function>
void wrap_in_yajl_array(YAJLStream& stream, const std::string& name, Function&& function) {
    const ScopedJSONArray array(stream, impl::write_wrapper_name(stream, "array", name));
    std::invoke(std::forward<Function>(function));
}

}  // namespace nuv::serialization
