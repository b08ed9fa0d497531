// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/ctimer.h"

#include "nuv_platform/clock.h"
#include "platform/common/ctimer_calls.hpp"
#include "platform/linux/loop.hpp"

using nuv::platform::process_loop;

extern "C" {

int ctimer_setup_internal(void* /*base*/, ctimerhandle* handle, int type, int /*flags*/,
                          uint32_t count, uint32_t units_per_second, ctimer_callback_fn cb,
                          void* cbdata, int /*arg9*/, int /*arg10*/) {
    return nuv::platform::setup_timer(process_loop(), handle, type, count, units_per_second, cb,
                                      cbdata);
}

int ctimer_unsetup_internal(ctimerhandle* handle, int type) {
    return nuv::platform::unsetup_timer(process_loop(), handle, type);
}

int ctimer_endtval_internal(ctimerhandle* handle, int type, ctimer_tval* end) {
    return nuv::platform::timer_end(process_loop(), handle, type, end);
}

void ctimer_elapsedtval(ctimer_tval* now) {
    *now = nuv::platform::to_tval(nuv_clock_monotonic_ns());
}

}  // extern "C"
