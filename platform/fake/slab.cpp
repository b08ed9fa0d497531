// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/slab.h"

#include "nuv_platform/fake/fake_platform.hpp"
#include "platform/fake/call_text.hpp"

extern "C" void slab_reap(void) {
    if (auto* const fake = nuv::platform::FakePlatform::current()) {
        fake->daemon().note(nuv::platform::call_text(__func__));
    }
}
