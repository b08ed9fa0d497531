// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <sstream>
#include <streambuf>
#include <string>
#include <type_traits>

#include "nuv/serialization_exception.hpp"

namespace nuv::test {

using serialization::SerializationException;

/// What the Exception says that `function` throws; else what it returns, as text.
template <class Exception = SerializationException>
std::string message_of(auto&& function) {
    try {
        if constexpr (std::is_void_v<decltype(function())>) {
            return function(), "";
        } else {
            return (std::ostringstream() << function()).str();
        }
    } catch (const Exception& exception) {
        return exception.what();
    }
}

/// A sink with room for some bytes; then it refuses, or throws.
struct FullBuffer : std::streambuf {
    explicit FullBuffer(std::size_t size, bool throwing = false) : room(size), throws(throwing) {}
    int_type overflow(int_type byte) override {
        if (text.size() == room) {
            return throws ? throw SerializationException("full") : traits_type::eof();
        }
        text += traits_type::to_char_type(byte);
        return byte;
    }
    int sync() override { return ++syncs, 0; }

    std::size_t room;
    bool throws;
    std::string text;
    int syncs = 0;
};

}  // namespace nuv::test
