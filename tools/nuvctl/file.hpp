// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cerrno>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace nuvctl {

/// What is wrong with a file, in words for people, without its name.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Says what an errno value means. Throws FileError.
[[noreturn]] void throw_errno(int error);

/// A file that could not be written, with its name in words for people.
class OutputError : public std::runtime_error {
public:
    /// "-" is standard output; `error` is an errno value.
    explicit OutputError(const std::string& name, int error = errno);

    /// Whether the output is a pipe that its reader closed.
    bool is_broken_pipe() const { return error_ == EPIPE; }

private:
    int error_;
};

struct CloseFile {
    void operator()(std::FILE* file) const noexcept;
};
/// An open file; closed with the object, standard input and output are not.
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Opens the file `name`, with `flags` of open(2); "-" is standard input. Throws FileError, also for a
/// folder.
File open_to_read(const std::string& name, int flags = 0);
/// Opens the file `name`; "-" is standard output. Throws FileError, also for a folder.
File open_to_write(const std::string& name);

}  // namespace nuvctl
