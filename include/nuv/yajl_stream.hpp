// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string_view>

#include "nuv/export.hpp"
#include "nuv/json_integer.hpp"

struct yajl_gen_t;

namespace nuv::serialization {

/// Writes one JSON document (RFC 8259) to an output stream, piece by piece as it is generated.
///
/// Each writer returns true only when the generator took the value and the stream took the text.
/// It returns false, and never throws, when the value does not fit here (a key that is no string,
/// text that is not UTF-8, more than 127 levels, anything after the document's end) or when the
/// stream has its bad or fail bit set afterwards, or throws. End-of-file alone is no failure and does
/// not keep it from writing. A further document needs a further
/// YAJLStream. One thread at a time.
class NUV_EXPORT YAJLStream {
public:
    enum class YAJLIndentation : std::uint8_t {
        COMPACT = 0,      ///< one line, no blanks, no line end
        TAB = 1,          ///< a line per member, a tab per level, a line end after the document
        FOUR_BLANKS = 2,  ///< the same with four blanks per level
    };

    /// `os` must outlive the object. Throws SerializationException when there is no memory.
    YAJLStream(std::ostream& os, YAJLIndentation indentation);
    YAJLStream(const YAJLStream&) = delete;
    YAJLStream& operator=(const YAJLStream&) = delete;

    bool open_object() noexcept;
    bool close_object() noexcept;
    bool open_array() noexcept;
    bool close_array() noexcept;
    bool write_bool(bool value) noexcept;
    bool write_null() noexcept;
    /// Writes a key or a string value; `text` is unescaped UTF-8.
    bool write_string(std::string_view text) noexcept;
    /// Writes `value` as a signed 64-bit integer: an unsigned one above 2^63-1 appears negative,
    /// and YAJLNode::get_integer() turns it back.
    template <JSONInteger T>
    bool write_integer(T value) noexcept {
        return write_int64(static_cast<std::int64_t>(value));
    }

private:
    struct FreeGenerator {
        void operator()(yajl_gen_t* generator) const noexcept;
    };

    static void print(void* self, const char* text, std::size_t length) noexcept;
    bool accepted(int generator_status) noexcept;
    bool write_int64(std::int64_t value) noexcept;

    std::unique_ptr<yajl_gen_t, FreeGenerator> generator_;
    std::ostream& os_;
    bool last_output_accepted_ = false;
};

}  // namespace nuv::serialization
