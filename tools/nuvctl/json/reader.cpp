// SPDX-License-Identifier: Apache-2.0
#include "json/reader.hpp"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <sstream>

#include "json/fields.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuvctl {

std::string JsonReader::next() {
    std::string text;
    unsigned depth = 0;
    bool in_string = false;
    bool escaped = false;
    for (int c = read(); c != EOF; c = read()) {
        if (text.empty()) {
            if (std::isspace(c) != 0) {
                continue;
            }
            begin_ = line_;
        }
        text += static_cast<char>(c);
        if (in_string) {
            in_string = escaped || c != '"';
            escaped = c == '\\' && !escaped;
        } else if (c == '"') {
            in_string = true;
        } else if (c == '{' || c == '[') {
            ++depth;
        } else if ((c == '}' || c == ']') && depth > 0) {
            --depth;
        }
        // What nests deeper the parser refuses, however it ends.
        if ((depth == 0 && !in_string) || depth > nuv::serialization::YAJLNode::MAX_DEPTH) {
            break;
        }
    }
    return text;
}

int JsonReader::read() {
    line_ += last_ == '\n' ? 1U : 0U;
    last_ = std::getc(file_.get());
    if (last_ == EOF && std::ferror(file_.get()) != 0) {
        throw_errno(errno);
    }
    return last_;
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
