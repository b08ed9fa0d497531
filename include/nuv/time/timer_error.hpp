// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <system_error>

#include "nuv/export.hpp"

namespace nuv::time {

/// A failed operation of a timer: its code, and the code's message as text.
class NUV_EXPORT TimerError : public std::system_error {
public:
    explicit TimerError(const std::error_code& code) : std::system_error(code) {}
    ~TimerError() override;
};

}  // namespace nuv::time
