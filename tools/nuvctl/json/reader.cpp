// SPDX-License-Identifier: Apache-2.0
#include "json/reader.hpp"

#include <unistd.h>
#include <yajl/yajl_parse.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string_view>
#include <utility>

#include "json/fields.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuvctl {

namespace {

/// Finds where one value ends. The library's parser reads a text to its end.
class ValueParser {
public:
    ValueParser() { yajl_config(parser_.get(), yajl_allow_comments, 1); }

    bool wants_more() const { return !complete_ && !failed_; }
    bool has_failed() const { return failed_; }

    /// Takes octets up to the end of the value. Returns their number.
    std::size_t take(std::string_view octets) {
        const auto status = yajl_parse(
            parser_.get(), reinterpret_cast<const unsigned char*>(octets.data()), octets.size());
        const std::size_t taken = yajl_get_bytes_consumed(parser_.get());
        text_ += octets.substr(0, taken);
        failed_ = status == yajl_status_error;
        return taken;
    }

    /// To be called at the end of the file, if the value wants more. Returns false if there was no
    /// value: nothing but blanks and comments.
    bool finish() {
        const std::size_t size = text_.size();
        // A number at the end of the file ends here. Behind comments this number is the value.
        if (!begun_ && take("\n0\n") > 0 && complete_) {
            return false;
        }
        text_.resize(size);
        failed_ = failed_ || (!complete_ && yajl_complete_parse(parser_.get()) != yajl_status_ok);
        return true;
    }

    std::string release_text() { return std::move(text_); }

    /// Number of lines that end before the value begins, and before its end or the fault.
    std::uint64_t lines_before_begin() const { return lines_before(begin_); }
    std::uint64_t lines_before_end() const { return lines_before(text_.size()); }

    std::string reason() {
        const std::unique_ptr<unsigned char, FreeText> text(
            yajl_get_error(parser_.get(), 0, nullptr, 0), {parser_.get()});
        std::string reason(reinterpret_cast<const char*>(text.get()));
        reason.erase(std::min(reason.find('\n'), reason.size()));
        return reason;
    }

private:
    struct FreeParser {
        void operator()(yajl_handle parser) const noexcept { yajl_free(parser); }
    };
    struct FreeText {
        yajl_handle parser;
        void operator()(unsigned char* text) const noexcept { yajl_free_error(parser, text); }
    };

    /// A token that is a value, or opens (1) or closes (-1) one. The parser stops behind the last one.
    template <int Step, class... Ignored>
    static int token(void* self, Ignored... /*content*/) noexcept {
        return static_cast<ValueParser*>(self)->nest(Step) ? 1 : 0;
    }
    bool nest(int step) noexcept {
        if (!begun_) {
            begun_ = true;
            begin_ = text_.size() + yajl_get_bytes_consumed(parser_.get());
        }
        depth_ += step;
        complete_ = depth_ == 0 || depth_ > int{nuv::serialization::YAJLNode::MAX_DEPTH};
        return !complete_;
    }

    /// The octet before `end` is the last one of a token: a newline there ends the token's line.
    std::uint64_t lines_before(std::size_t end) const {
        const auto last = text_.begin() + static_cast<std::ptrdiff_t>(end == 0 ? 0 : end - 1);
        return static_cast<std::uint64_t>(std::count(text_.begin(), last, '\n'));
    }

    // In the order of their members: null, boolean, integer, double, number, string, start and key of
    // a map, its end, start and end of an array.
    static constexpr yajl_callbacks callbacks{token<0>,  token<0>, nullptr,  nullptr,
                                              token<0>,  token<0>, token<1>, nullptr,
                                              token<-1>, token<1>, token<-1>};

    std::unique_ptr<yajl_handle_t, FreeParser> parser_{yajl_alloc(&callbacks, nullptr, this)};
    std::string text_;
    std::size_t begin_ = 0;  // behind the value's first token
    int depth_ = 0;
    bool begun_ = false;
    bool complete_ = false;
    bool failed_ = false;
};

}  // namespace

std::string JsonReader::next() {
    ValueParser parser;
    while (parser.wants_more() && fill()) {
        at_ += parser.take(std::string_view(octets_).substr(at_));
    }
    if (parser.wants_more() && !parser.finish()) {
        return {};
    }
    if (parser.has_failed()) {
        throw FileError("line " + std::to_string(line_ + parser.lines_before_end()) + ": " +
                        parser.reason());
    }
    begin_ = line_ + parser.lines_before_begin();
    line_ += parser.lines_before_end();
    return parser.release_text();
}

bool JsonReader::fill() {
    if (at_ == octets_.size()) {
        constexpr std::size_t most = 65'536;
        octets_.resize(most);
        // Not fread(), which would wait for more than one value from a pipe.
        const ssize_t size = ::read(fileno(file_.get()), octets_.data(), octets_.size());
        if (size < 0) {
            throw_errno(errno);
        }
        octets_.resize(static_cast<std::size_t>(size));
        at_ = 0;
    }
    return !octets_.empty();
}

nuv::serialization::YAJLNode parse_json(const std::string& text) {
    std::istringstream is(text);
    try {
        return nuv::serialization::YAJLNode(is);
    } catch (const nuv::serialization::SerializationException& error) {
        // Behind a line of its own, the parser's reason, then what is around the place.
        std::istringstream lines(error.what());
        std::string reason;
        std::getline(lines, reason);
        std::getline(lines, reason);
        throw FieldError(reason);
    }
}

}  // namespace nuvctl
