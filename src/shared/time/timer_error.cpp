// SPDX-License-Identifier: Apache-2.0
#include "nuv/time/timer_error.hpp"

namespace nuv::time {

TimerError::~TimerError() = default;

}  // namespace nuv::time
