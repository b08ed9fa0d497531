// SPDX-License-Identifier: Apache-2.0
#include "nuv/yajl_stream.hpp"

#include <yajl/yajl_gen.h>

#include <ostream>
#include <string>
#include <utility>

#include "internal/masked_exceptions.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::serialization {

namespace {

/// write_masked() without a sentry where the sentry would have nothing to do. The generator prints its
/// text in pieces of a few bytes, most of them one byte long.
void write_piece(std::ostream& os, const char* text, std::streamsize length) {
    if (!os.good() || os.tie() != nullptr || (os.flags() & std::ios::unitbuf) != 0) {
        impl::write_masked(os, text, length);
        return;
    }
    using Traits = std::ostream::traits_type;
    std::streambuf& buffer = *os.rdbuf();
    bool written = false;
    try {
        written = length == 1 ? !Traits::eq_int_type(buffer.sputc(*text), Traits::eof())
                              : buffer.sputn(text, length) == length;
    } catch (...) {
        written = false;  // a buffer that throws is one that failed
    }
    if (!written) {
        os.setstate(std::ios::badbit);
    }
}

}  // namespace

void YAJLStream::FreeGenerator::operator()(yajl_gen_t* generator) const noexcept {
    yajl_gen_free(generator);
}

YAJLStream::YAJLStream(std::ostream& os, YAJLIndentation indentation)
    : generator_(yajl_gen_alloc(nullptr)), os_(os) {
    if (generator_ == nullptr) {
        throw SerializationException("Creation of YAJL generator failed, no JSON created");
    }
    yajl_gen_t* generator = generator_.get();
    if (indentation != YAJLIndentation::COMPACT) {
        yajl_gen_config(generator, yajl_gen_beautify, 1);
    }
    if (indentation == YAJLIndentation::TAB) {
        yajl_gen_config(generator, yajl_gen_indent_string, "\t");
    }
    yajl_gen_config(generator, yajl_gen_validate_utf8, 1);
    yajl_gen_config(generator, yajl_gen_print_callback, &YAJLStream::print, this);
}

// Called from C: nothing may be thrown through it. The flag is assigned with every piece, since one
// value prints several and the last one alone does not tell.
void YAJLStream::print(void* self, const char* text, std::size_t length) noexcept {
    auto& stream = *static_cast<YAJLStream*>(self);
    try {
        write_piece(stream.os_, text, static_cast<std::streamsize>(length));
    } catch (...) {
        // A stream that throws has set its flags before.
    }
    stream.last_output_accepted_ = !stream.os_.fail();
}

bool YAJLStream::accepted(int generator_status) noexcept {
    return generator_status == yajl_gen_status_ok && std::exchange(last_output_accepted_, false);
}

bool YAJLStream::open_object() noexcept { return accepted(yajl_gen_map_open(generator_.get())); }

bool YAJLStream::close_object() noexcept { return accepted(yajl_gen_map_close(generator_.get())); }

bool YAJLStream::open_array() noexcept { return accepted(yajl_gen_array_open(generator_.get())); }

bool YAJLStream::close_array() noexcept { return accepted(yajl_gen_array_close(generator_.get())); }

bool YAJLStream::write_bool(bool value) noexcept {
    return accepted(yajl_gen_bool(generator_.get(), value ? 1 : 0));
}

bool YAJLStream::write_null() noexcept { return accepted(yajl_gen_null(generator_.get())); }

bool YAJLStream::write_string(std::string_view text) noexcept {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    return accepted(yajl_gen_string(generator_.get(), bytes, text.size()));
}

bool YAJLStream::write_int64(std::int64_t value) noexcept {
    return accepted(yajl_gen_integer(generator_.get(), value));
}

}  // namespace nuv::serialization
