// SPDX-License-Identifier: Apache-2.0
#include "nuv/wrap_in_yajl.hpp"

#include "internal/quote.hpp"
#include "nuv/serialization_exception.hpp"
#include "nuv/yajl_stream.hpp"

namespace nuv::impl {

using serialization::SerializationException;

std::string write_wrapper_name(YAJLStream& stream, const std::string& container,
                               const std::string& name) {
    std::string prefix = "Wrapping function call in " + container + " " + quote(name) + " failed: ";
    if (!stream.write_string(name)) {
        throw SerializationException(prefix + "Failed to write wrapper " + container + " name");
    }
    return prefix;
}

}  // namespace nuv::impl
