// SPDX-License-Identifier: Apache-2.0
#include "file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
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

namespace {

/// None if there is no such file; "-" is the file behind `standard`.
std::optional<struct stat> status_of(const std::string& name, int standard) {
    struct stat status {};
    const int result = name == "-" ? fstat(standard, &status) : stat(name.c_str(), &status);
    return result == 0 ? std::optional(status) : std::nullopt;
}

}  // namespace

OutputFile::OutputFile(const std::string& name, std::span<const std::string> inputs)
    : name_(name), target_(name) {
    const auto old = status_of(name, STDOUT_FILENO);
    const bool regular = !old || S_ISREG(old->st_mode);
    for (const std::string& input : inputs) {
        const auto other = status_of(input, STDIN_FILENO);
        if (old && other && regular && old->st_dev == other->st_dev &&
            old->st_ino == other->st_ino) {
            throw FileError("the output is also an input");
        }
    }
    if (name == "-") {
        stream_.reset(stdout);
        return;
    }
    if (!old && std::filesystem::is_symlink(name)) {
        throw FileError("a symbolic link that leads to no file");
    }
    if (regular) {
        if (old) {
            target_ = std::filesystem::canonical(name);
            if (faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0) {
                throw_errno(errno);
            }
        }
        temporary_ = target_ + ".nuvctl-" + std::to_string(getpid());
    }
    stream_.reset(regular ? std::fopen(temporary_.c_str(), "wbxe")
                          : std::fopen(name.c_str(), "wbe"));
    if (stream_ == nullptr) {
        throw_errno(errno);
    }
    if (regular && old) {
        fchmod(fileno(stream_.get()), old->st_mode);
    }
}

OutputFile::~OutputFile() {
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

void OutputFile::write(std::string_view octets) {
    if (std::fwrite(octets.data(), 1, octets.size(), stream_.get()) != octets.size() ||
        std::fflush(stream_.get()) != 0) {
        throw OutputError(name_);
    }
}

void OutputFile::complete() {
    if (temporary_.empty()) {
        return;
    }
    if (fsync(fileno(stream_.get())) != 0 ||
        std::rename(temporary_.c_str(), target_.c_str()) != 0) {
        throw OutputError(name_);
    }
    temporary_.clear();
}

}  // namespace nuvctl
