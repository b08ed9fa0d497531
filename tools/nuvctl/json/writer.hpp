// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string_view>

#include "file.hpp"
#include "nuv/yajl_stream.hpp"

namespace nuvctl {

/// A YAJLStream to standard output whose members have their name in the call. Every function throws
/// OutputError when the stream fails.
class Json {
public:
    explicit Json(nuv::serialization::YAJLStream& stream) : stream_(stream) {}

    void null(std::string_view name) { check(key(name) && stream_.write_null()); }
    void boolean(std::string_view name, bool value) {
        check(key(name) && stream_.write_bool(value));
    }
    /// Deliberate: negative from 2^63 on, as the library's JSON has its integers.
    void number(std::string_view name, std::uint64_t value) {
        check(key(name) && stream_.write_integer(value));
    }
    void text(std::string_view name, std::string_view value) {
        check(key(name) && stream_.write_string(value));
    }
    template <class List>
    void numbers(std::string_view name, const List& values) {
        open_list(name);
        for (const auto value : values) {
            number({}, static_cast<std::uint64_t>(value));
        }
        close_list();
    }
    template <class T>
    void optional_number(std::string_view name, const std::optional<T>& value) {
        value ? number(name, *value) : null(name);
    }
    void open_object(std::string_view name) { check(key(name) && stream_.open_object()); }
    void close_object() { check(stream_.close_object()); }
    void open_list(std::string_view name) { check(key(name) && stream_.open_array()); }
    void close_list() { check(stream_.close_array()); }

private:
    bool key(std::string_view name) { return name.empty() || stream_.write_string(name); }
    static void check(bool written) {
        if (!written) {
            throw OutputError("-");
        }
    }

    nuv::serialization::YAJLStream& stream_;
};

/// Writes one JSON object and a newline, with the members that `write` writes; indented if `pretty`.
template <class Write>
void write_object(std::ostream& os, bool pretty, Write write) {
    using nuv::serialization::YAJLStream;
    YAJLStream stream(os, pretty ? YAJLStream::YAJLIndentation::FOUR_BLANKS
                                 : YAJLStream::YAJLIndentation::COMPACT);
    Json json(stream);
    json.open_object({});
    write(json);
    json.close_object();
    if (!pretty) {
        os << '\n';
    }
}

}  // namespace nuvctl
