// SPDX-License-Identifier: Apache-2.0
#pragma once

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

struct CloseFile {
    void operator()(std::FILE* file) const noexcept;
};
/// An open file; closed with the object, standard input and output are not.
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Each opens the file `name`; "-" is standard input or output. Throws FileError, also for a folder.
File open_to_read(const std::string& name);
File open_to_write(const std::string& name);

/// Says on standard error that the file `name` could not be written, for the reason in errno. Returns
/// the exit status.
int write_failed(const std::string& name);

}  // namespace nuvctl
