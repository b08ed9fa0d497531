// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/csock.h"

#include <cerrno>
#include <stdexcept>

#include "nuv_platform/clock.h"
#include "nuv_platform/ctimer.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "platform/common/ctimer_calls.hpp"
#include "platform/common/loop.hpp"
#include "platform/fake/call_text.hpp"

namespace nuv::platform {

namespace {

class VirtualLoop final : public Loop {
public:
    explicit VirtualLoop(FakeClock& clock) : clock_(clock) {}

private:
    std::int64_t now_ns() noexcept override { return clock_.now().count(); }
    std::int64_t coarse_now_ns() noexcept override { return now_ns(); }

    int wait(int epoll_fd, std::span<epoll_event> ready, std::int64_t timeout_ns) override {
        const int found = ::epoll_wait(epoll_fd, ready.data(), static_cast<int>(ready.size()), 0);
        if (found == 0 && timeout_ns == Timers::NEVER) {
            throw std::logic_error(
                "the loop would sleep for ever: no descriptor is ready and no timer is armed");
        }
        if (found == 0) {
            clock_.advance(std::chrono::nanoseconds(timeout_ns));
        }
        return found;
    }

    FakeClock& clock_;
};

}  // namespace

FakeLoop::FakeLoop(std::vector<std::string>& shared_journal, FakeClock& clock)
    : FakeService(shared_journal,
                  {"csock_init", "csock_add_fd", "csock_remove_fd", "csock_fd_blocking",
                   "csock_select_with_msecs", "ctimer_setup_internal", "ctimer_unsetup_internal",
                   "ctimer_endtval_internal"}),
      loop_(std::make_unique<VirtualLoop>(clock)) {}

FakeLoop::~FakeLoop() = default;

std::vector<std::string> FakeLoop::registered() const { return loop_->registered(); }

std::size_t FakeLoop::armed_timers() const noexcept { return loop_->armed_timers(); }

std::vector<std::string> FakeLoop::leftovers() const {
    std::vector<std::string> left;
    if (loop_->is_open()) {
        left.emplace_back("csock_init()");
    }
    for (const std::string& name : registered()) {
        left.push_back("descriptor \"" + name + "\" is registered");
    }
    if (armed_timers() > 0) {
        left.push_back(std::to_string(armed_timers()) + " timers are armed");
    }
    return left;
}

namespace {

FakeLoop* current() {
    FakePlatform* const fake = FakePlatform::current();
    return fake != nullptr ? &fake->loop() : nullptr;
}

}  // namespace

}  // namespace nuv::platform

using nuv::platform::FakeLoop;
using nuv::platform::noted;
using nuv::platform::Shown;

extern "C" {

int csock_init(void) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr) {
        return -ENODEV;
    }
    const auto refusal = noted(*fake, __func__);
    return refusal ? *refusal : fake->loop().open();
}

void csock_exit(void) {
    if (FakeLoop* const fake = nuv::platform::current()) {
        fake->note(nuv::platform::call_text(__func__));
        fake->loop().close();
    }
}

uint32_t csock_add_fd(int fd, const char* name, csock_fd_callback readable,
                      csock_fd_callback writable, csock_fd_callback urgent,
                      csock_fd_callback hang_up, unsigned flags, void* ctx) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr || noted(*fake, __func__, Shown{"fd"}, name, readable, writable, urgent,
                                 hang_up, flags, static_cast<const void*>(ctx))) {
        return 0;
    }
    return fake->loop().add(fd, name, {readable, writable, urgent, hang_up}, ctx);
}

int csock_remove_fd(uint32_t handle) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr) {
        return -ENODEV;
    }
    const auto refusal = noted(*fake, __func__, fake->loop().name(handle));
    return refusal ? *refusal : fake->loop().remove(handle);
}

int csock_fd_blocking(uint32_t handle) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr) {
        return -ENODEV;
    }
    const auto refusal = noted(*fake, __func__, fake->loop().name(handle));
    return refusal ? *refusal : fake->loop().check(handle);
}

// The two that only look are not noted.
int csock_select_with_msecs(int32_t msecs) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr) {
        return -ENODEV;
    }
    const auto refusal = fake->take_failure(__func__);
    return refusal ? *refusal : fake->loop().pass(msecs);
}

int ctimer_endtval_internal(ctimerhandle* handle, int type, ctimer_tval* end) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr) {
        return -1;
    }
    const auto refusal = fake->take_failure(__func__);
    return refusal ? *refusal : nuv::platform::timer_end(fake->loop(), handle, type, end);
}

int ctimer_setup_internal(void* base, ctimerhandle* handle, int type, int flags, uint32_t count,
                          uint32_t units_per_second, ctimer_callback_fn cb, void* cbdata, int arg9,
                          int arg10) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr) {
        return -2;
    }
    const auto refusal = noted(*fake, __func__, static_cast<const void*>(base),
                               static_cast<const void*>(handle), type, flags, count,
                               units_per_second, cb, static_cast<const void*>(cbdata), arg9, arg10);
    return refusal ? *refusal
                   : nuv::platform::setup_timer(fake->loop(), handle, type, count, units_per_second,
                                                cb, cbdata);
}

int ctimer_unsetup_internal(ctimerhandle* handle, int type) {
    FakeLoop* const fake = nuv::platform::current();
    if (fake == nullptr) {
        return -1;
    }
    const auto refusal = noted(*fake, __func__, static_cast<const void*>(handle), type);
    return refusal ? *refusal : nuv::platform::unsetup_timer(fake->loop(), handle, type);
}

void ctimer_elapsedtval(ctimer_tval* now) {
    *now = nuv::platform::to_tval(nuv_clock_monotonic_ns());
}

}  // extern "C"
