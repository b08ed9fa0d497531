// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <system_error>

#include "nuv/export.hpp"

namespace nuv::async {

/// A refused operation of a task: its code, and as text `what` with the code's message behind.
class NUV_EXPORT TaskError : public std::system_error {
public:
    TaskError(const std::error_code& code, const std::string& what)
        : std::system_error(code, what) {}
    ~TaskError() override;
};

}  // namespace nuv::async
