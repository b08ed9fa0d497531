// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace nuv::platform {

/// For slab_reap(), the call that a main loop makes each second: sends the sign of life now when it
/// would be due before the next one, so that an idle daemon wakes up once for both.
void ride_on_second_pass() noexcept;

}  // namespace nuv::platform
