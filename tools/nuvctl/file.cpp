// SPDX-License-Identifier: Apache-2.0
#include "file.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace nuvctl {

void throw_errno(int error) { throw FileError(std::generic_category().message(error)); }

OutputError::OutputError(const std::string& name, int error)
    : std::runtime_error("cannot write to " + (name == "-" ? "standard output" : name)),
      error_(error) {}

void CloseFile::operator()(std::FILE* file) const noexcept {
    if (file != stdin && file != stdout) {
        std::fclose(file);  // NOLINT(cppcoreguidelines-owning-memory): this is its owner
    }
}

File open_to_read(const std::string& name, int flags) {
    File file;
    if (name == "-") {
        file.reset(stdin);
    } else if (const int descriptor = open(name.c_str(), O_RDONLY | O_CLOEXEC | flags);
               descriptor >= 0) {
        file.reset(fdopen(descriptor, "rb"));
    }
    struct stat status {};
    if (file == nullptr || fstat(fileno(file.get()), &status) != 0) {
        throw_errno(errno);
    }
    if (S_ISDIR(status.st_mode)) {
        throw_errno(EISDIR);
    }
    return file;
}

File open_to_write(const std::string& name) {
    File file(name == "-" ? stdout : std::fopen(name.c_str(), "wbe"));
    if (file == nullptr) {
        throw_errno(errno);
    }
    return file;
}

}  // namespace nuvctl
