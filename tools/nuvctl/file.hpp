// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cerrno>
#include <cstdio>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

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

/// A file to write. A regular one is written beside the place of its name and renamed when it is
/// complete: until then an older file of that name stays as it is.
class OutputFile {
public:
    /// Opens the file `name`; "-" is standard output. Throws FileError, also for a folder and for one of
    /// the files `inputs`, of which "-" is standard input.
    OutputFile(const std::string& name, std::span<const std::string> inputs);
    /// Removes a file that is not complete.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Writes the octets through to the file. Throws OutputError.
    void write(std::string_view octets);
    /// Gives the file its name; everything is written. Throws OutputError.
    void complete();

private:
    std::string name_;
    std::string target_;     // the name behind symbolic links
    std::string temporary_;  // empty if the file has its name from the beginning
    File stream_;
};

}  // namespace nuvctl
