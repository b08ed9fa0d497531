// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "fuzz/codec_checks.hpp"

namespace nuv::test {

/// Reads an E; expects that to succeed.
template <class E>
E read_as(std::string_view hex, E element = {}) {
    serialization::SerializationContext ctx;
    EXPECT_EQ(message_of([&] { element.deserialize(from_hex(hex), ctx); }), "") << hex;
    return element;
}

/// An element's octets as hex, or the text with which it refuses to be written.
inline std::string as_written(const Element& element) {
    const Written written = write(element);
    return written.error.empty() ? to_hex(written.octets) : written.error;
}

}  // namespace nuv::test
