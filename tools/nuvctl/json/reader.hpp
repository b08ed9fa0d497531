// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "file.hpp"
#include "nuv/yajl_node.hpp"

namespace nuvctl {

/// The JSON values of a file, one by one; blanks and comments between them, or nothing.
class JsonReader {
public:
    explicit JsonReader(const std::string& name) : file_(open_to_read(name)) {}

    /// The text of the next value, with the comments before it; empty at the end of the file. It ends
    /// where the parser finds its end, or is nested deeper than parse_json() reads. Throws FileError,
    /// for text that is no JSON with the line and the parser's reason.
    std::string next();

    /// The line, counted from 1, in which that value begins.
    std::uint64_t line() const { return begin_; }

private:
    /// Whether there are octets behind `at_`, from the file if need be.
    bool fill();

    File file_;
    std::string octets_;
    std::size_t at_ = 0;
    std::uint64_t line_ = 1;  // of the octet at `at_`
    std::uint64_t begin_ = 1;
};

/// Throws FieldError with the parser's reason.
nuv::serialization::YAJLNode parse_json(const std::string& text);

}  // namespace nuvctl
