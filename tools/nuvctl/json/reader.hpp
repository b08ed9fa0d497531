// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "file.hpp"
#include "nuv/yajl_node.hpp"

namespace nuvctl {

/// The JSON values of a file, one by one; blanks between them, or not.
class JsonReader {
public:
    explicit JsonReader(const std::string& name) : file_(open_to_read(name)) {}

    /// The text of the next value, as far as brackets and quotes tell where it ends; empty at the end
    /// of the file. Throws FileError.
    std::string next();

    /// The line, counted from 1, in which that text begins.
    std::uint64_t line() const { return begin_; }

private:
    int read();

    File file_;
    std::uint64_t line_ = 1;
    std::uint64_t begin_ = 1;
    int last_ = 0;
};

/// Throws FieldError with the parser's reason.
nuv::serialization::YAJLNode parse_json(const std::string& text);

}  // namespace nuvctl
