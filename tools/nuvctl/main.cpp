// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>

#include <cerrno>
#include <clocale>
#include <exception>
#include <iostream>
#include <utility>

#include "commands/command_line.hpp"
#include "commands/report.hpp"

namespace {

/// Keeps the first file that is opened from getting the number of a standard stream that is closed: what
/// stands in its place can neither be read nor written, just as before.
void occupy_standard_streams() {
    for (const auto& [stream, unusable] : {std::pair{0, O_WRONLY}, {1, O_RDONLY}, {2, O_RDONLY}}) {
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF) {
            static_cast<void>(open("/dev/null", unusable));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int failure = 1;
    occupy_standard_streams();
    // Text is UTF-8 whatever the environment says, as JSON is.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::ios::sync_with_stdio(false);
    try {
        return nuvctl::run(argc, argv);
    } catch (const std::exception& error) {
        nuvctl::report(error.what());
        return failure;
    }
}
