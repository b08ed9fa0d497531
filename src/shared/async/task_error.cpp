// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/task_error.hpp"

namespace nuv::async {

TaskError::~TaskError() = default;

}  // namespace nuv::async
