// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string_view>

#include "nuv/serialization_exception.hpp"
#include "nuv/yajl_stream.hpp"

namespace nuvctl {

/// A JSON value on a line of its own, or indented if `pretty`. Members have their name in the call,
/// elements of a list have none. Throws nuv::serialization::SerializationException when the stream
/// fails.
class Json {
public:
    explicit Json(std::ostream& os, bool pretty = false)
        : os_(os),
          pretty_(pretty),
          stream_(os, static_cast<YAJLStream::YAJLIndentation>(pretty ? 2 : 0)) {}

    void null(std::string_view name) { check(key(name) && stream_.write_null()); }
    void boolean(std::string_view name, bool value) {
        check(key(name) && stream_.write_bool(value));
    }
    void number(std::string_view name, std::uint64_t value) {
        check(key(name) && stream_.write_integer(value));
    }
    /// `value` is UTF-8.
    void text(std::string_view name, std::string_view value) {
        check(key(name) && stream_.write_string(value));
    }
    template <class T>
    void optional_number(std::string_view name, const std::optional<T>& value) {
        value ? number(name, *value) : null(name);
    }
    void open_object(std::string_view name) { check(key(name) && stream_.open_object()); }
    void close_object() { check(stream_.close_object()); }
    void open_list(std::string_view name) { check(key(name) && stream_.open_array()); }
    void close_list() { check(stream_.close_array()); }

    /// Ends the line.
    void end() {
        if (!pretty_) {
            os_ << '\n';  // the indented form has its own
        }
    }

private:
    using YAJLStream = nuv::serialization::YAJLStream;

    bool key(std::string_view name) { return name.empty() || stream_.write_string(name); }
    static void check(bool written) {
        if (!written) {
            throw nuv::serialization::SerializationException("cannot write to standard output");
        }
    }

    std::ostream& os_;
    bool pretty_;
    YAJLStream stream_;
};

}  // namespace nuvctl
