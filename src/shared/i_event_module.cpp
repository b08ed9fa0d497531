// SPDX-License-Identifier: Apache-2.0
#include "nuv/i_event_module.hpp"

namespace nuv {

IEventModule::~IEventModule() = default;

}  // namespace nuv
