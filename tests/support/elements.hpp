// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <istream>
#include <string>

#include "nuv/ieee802_11/ieee802_11_element_base.hpp"
#include "nuv/mem_buf.hpp"
#include "support/hex.hpp"

namespace nuv::test {

/// Reads `element` from `hex` with another octet behind it, over a stream and from memory. Returns
/// the message of the failure, "" for none. Expects both ways to agree on it.
template <class E>
std::string read_element(E& element, std::string_view hex) {
    Octets octets = from_hex(hex);
    octets.push_back(0xA5);
    serialization::SerializationContext ctx;
    E from_memory = element;
    const std::string memory_error = message_of([&] { from_memory.deserialize(octets, ctx); });
    MemBuf buffer(octets);
    std::istream is(&buffer);
    std::string error = message_of([&] { element.deserialize_impl(is, ctx); });
    EXPECT_EQ(error, memory_error) << hex;
    if (error.empty()) {
        EXPECT_TRUE(element == from_memory) << hex;
        EXPECT_EQ(is.tellg(), 2 + octets[1]) << hex << ": the stream stands behind the element";
    }
    return error;
}

/// An element's octets as hex, which are get_length() many.
inline std::string write_element(const ieee802_11::IEEE802_11_Element_Base& element) {
    std::ostringstream os;
    serialization::SerializationContext ctx;
    element.serialize_impl(os, ctx);
    const std::string bytes = os.str();
    EXPECT_EQ(bytes.size(), element.get_length());
    return to_hex({bytes.begin(), bytes.end()});
}

/// The message of the failure to write an element, which then writes nothing.
inline std::string write_error(const ieee802_11::IEEE802_11_Element_Base& element) {
    std::ostringstream os;
    serialization::SerializationContext ctx;
    std::string error = message_of([&] { element.serialize_impl(os, ctx); });
    EXPECT_EQ(os.str(), "");
    return error;
}

/// Reads `hex` into a fresh E and expects it to be written as `rewritten`, or as it came.
template <class E>
E expect_round_trip(std::string_view hex, std::string_view rewritten = {}) {
    E element;
    EXPECT_EQ(read_element(element, hex), "") << hex;
    EXPECT_EQ(write_element(element), rewritten.empty() ? hex : rewritten);
    return element;
}

template <class E>
std::string read_error(std::string_view hex) {
    E element;
    return read_element(element, hex);
}

}  // namespace nuv::test
