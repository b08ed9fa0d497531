// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "nuv/export.hpp"

namespace nuv::serialization {

/// The one exception of all serializers: malformed input, or a stream that failed.
class NUV_EXPORT SerializationException : public std::exception {
public:
    explicit SerializationException(const char* message) : message_(message) {}
    explicit SerializationException(std::string message) : message_(std::move(message)) {}

    /// The message up to its first NUL. A message may hold one: it can quote a byte of the input.
    const char* what() const noexcept override { return message_.c_str(); }

private:
    std::string message_;
};

}  // namespace nuv::serialization
