// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/csock.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "nuv_platform/ctimer.h"

namespace {

// A descriptor that is closed with its object.
class Fd {
public:
    explicit Fd(int fd) : fd_(fd) { EXPECT_GE(fd, 0); }
    Fd(Fd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Fd& operator=(Fd&&) = delete;
    ~Fd() { close(); }
    void close() {
        if (fd_ >= 0) {
            ::close(std::exchange(fd_, -1));
        }
    }
    operator int() const { return fd_; }  // NOLINT(google-explicit-constructor)

private:
    int fd_;
};

std::pair<Fd, Fd> stream_pair() {
    std::array<int, 2> fds{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, fds.data()), 0);
    return {Fd(fds[0]), Fd(fds[1])};
}

Fd counter(unsigned value = 0) { return Fd(::eventfd(value, EFD_CLOEXEC | EFD_NONBLOCK)); }

// A registration whose callbacks are told apart by a letter in `calls`.
struct Watch {
    std::string calls;
    std::function<void(char)> then = [](char) {};
    uint32_t handle = 0;

    template <char Letter>
    static int on(int /*fd*/, void* ctx) {
        auto* const watch = static_cast<Watch*>(ctx);
        watch->calls += Letter;
        watch->then(Letter);
        return 0;
    }

    uint32_t add(int fd, const std::string& letters) {
        const auto wanted = [&letters](char letter, csock_fd_callback callback) {
            return letters.find(letter) != std::string::npos ? callback : nullptr;
        };
        handle = csock_add_fd(fd, "test", wanted('r', on<'r'>), wanted('w', on<'w'>),
                              wanted('u', on<'u'>), wanted('h', on<'h'>), 0, this);
        return handle;
    }
};

class CsockContract : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(csock_init(), 0); }
    void TearDown() override { csock_exit(); }

    // Passes until nothing is ready for one pass, at most `limit`.
    static void pass(int limit = 1) {
        for (int i = 0; i < limit; ++i) {
            ASSERT_EQ(csock_select_with_msecs(0), 0);
        }
    }
};

TEST_F(CsockContract, RefusesWhatItCannotWaitFor) {
    Watch watch;
    const Fd fd = counter();
    const Fd file(::open("/proc/self/exe", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(watch.add(file, "r"), 0U);
    EXPECT_EQ(watch.add(-1, "r"), 0U);
    EXPECT_EQ(watch.add(1 << 19, "r"), 0U);
    EXPECT_EQ(watch.add(fd, ""), 0U);
    const uint32_t handle = watch.add(fd, "r");
    ASSERT_NE(handle, 0U);
    EXPECT_EQ(Watch().add(fd, "w"), 0U) << "the same number twice";
    EXPECT_EQ(csock_fd_blocking(handle), 0);
    EXPECT_EQ(csock_remove_fd(handle), 0);
    for (const uint32_t wrong : {uint32_t{0}, handle}) {
        EXPECT_EQ(csock_remove_fd(wrong), -EINVAL);
        EXPECT_EQ(csock_fd_blocking(wrong), -EINVAL);
    }
    csock_exit();
    EXPECT_EQ(csock_select_with_msecs(0), -EINVAL);
    EXPECT_EQ(watch.add(fd, "r"), 0U);
    ASSERT_EQ(csock_init(), 0);
}

TEST_F(CsockContract, CallsWhatTheDescriptorIsReadyFor) {
    const struct {
        const char* name;
        const char* callbacks;
        std::function<void(int, Fd&)> event;  // own end, other end
        std::string first, second;            // calls of two passes
    } rows[] = {
        {"idle", "r", [](int, Fd&) {}, "", ""},
        {"readable is level-triggered", "r", [](int, Fd& other) { ::send(other, "x", 1, 0); }, "r",
         "r"},
        {"writable once", "w", [](int, Fd&) {}, "w", ""},
        {"both", "rw", [](int, Fd& other) { ::send(other, "x", 1, 0); }, "rw", "r"},
        {"hang-up has its own callback", "rh", [](int, Fd& other) { other.close(); }, "rh", "rh"},
        {"hang-up goes to readable", "rw", [](int, Fd& other) { other.close(); }, "rw", "r"},
        {"hang-up goes to writable", "w", [](int, Fd& other) { other.close(); }, "ww", "w"},
        {"hang-up without taker is dropped", "u", [](int, Fd& other) { other.close(); }, "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto [own, other] = stream_pair();
        Watch watch;
        ASSERT_NE(watch.add(own, row.callbacks), 0U);
        row.event(own, other);
        for (const std::string& expected : {row.first, row.second}) {
            watch.calls.clear();
            ASSERT_EQ(csock_select_with_msecs(0), 0);
            std::sort(watch.calls.begin(), watch.calls.end());
            // Spurious calls of "writable" are allowed, missing ones are not.
            watch.calls.erase(std::unique(watch.calls.begin(), watch.calls.end()),
                              watch.calls.end());
            std::string wanted = expected;
            std::sort(wanted.begin(), wanted.end());
            wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
            EXPECT_EQ(watch.calls, wanted);
        }
        EXPECT_EQ(csock_remove_fd(watch.handle), std::string(row.callbacks) == "u" ? -EINVAL : 0);
    }
}

TEST_F(CsockContract, WritableIsCalledAgainOnceTheDescriptorWasFull) {
    auto [own, other] = stream_pair();
    Watch watch;
    ASSERT_NE(watch.add(own, "w"), 0U);
    pass();
    std::string text(65536, 'x');
    while (::send(own, text.data(), text.size(), 0) > 0) {
    }
    watch.calls.clear();
    pass(3);
    EXPECT_EQ(watch.calls, "");
    while (::recv(other, text.data(), text.size(), 0) > 0) {
    }
    pass(3);
    EXPECT_GE(watch.calls.size(), 1U);
    EXPECT_EQ(csock_remove_fd(watch.handle), 0);
}

TEST_F(CsockContract, UrgentDataHasItsCallback) {
    const Fd server(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::listen(server, 1), 0);
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    ASSERT_EQ(::getsockname(server, generic, &size), 0);
    const Fd client(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::connect(client, generic, size), 0);
    const Fd own(::accept4(server, nullptr, nullptr, SOCK_CLOEXEC));
    Watch watch;
    ASSERT_NE(watch.add(own, "u"), 0U);
    ASSERT_EQ(::send(client, "!", 1, MSG_OOB), 1);
    pass();
    EXPECT_EQ(watch.calls, "u");
    EXPECT_EQ(csock_remove_fd(watch.handle), 0);
}

// Both are ready; whichever runs first removes the other.
TEST_F(CsockContract, ACallbackMayRemoveOtherRegistrationsAndItsOwn) {
    const Fd one = counter(1);
    const Fd two = counter(1);
    Watch first;
    Watch second;
    first.then = second.then = [&](char) {
        EXPECT_EQ(csock_remove_fd(first.handle), 0);
        EXPECT_EQ(csock_remove_fd(second.handle), 0);
    };
    ASSERT_NE(first.add(one, "rw"), 0U);
    ASSERT_NE(second.add(two, "rw"), 0U);
    pass(2);
    EXPECT_EQ(first.calls.size() + second.calls.size(), 1U);
}

TEST_F(CsockContract, ANumberReusedInOnePassReachesItsNewOwnerOnly) {
    Fd one = counter(1);
    Fd two = counter(1);
    Watch first;
    Watch second;
    Watch next;
    const auto replace = [&](Watch& mine, Watch& theirs, Fd& fd) {
        return [&](char) {
            csock_remove_fd(theirs.handle);
            const int number = fd;
            fd.close();
            ASSERT_EQ(::dup2(mine.handle == first.handle ? one : two, number), number);
            ASSERT_NE(next.add(number, "r"), 0U);
            mine.then = [](char) {};
        };
    };
    first.then = replace(first, second, two);
    second.then = replace(second, first, one);
    ASSERT_NE(first.add(one, "r"), 0U);
    ASSERT_NE(second.add(two, "r"), 0U);
    pass();
    EXPECT_EQ(first.calls.size() + second.calls.size(), 1U);
    EXPECT_EQ(next.calls, "");
    pass();
    EXPECT_EQ(next.calls, "r");
}

TEST_F(CsockContract, ClosedBeforeRemovedAndRegisteredAgain) {
    Fd old = counter(1);
    const int number = old;
    const Fd keeps_the_file(::dup(old));
    Watch first;
    Watch second;
    ASSERT_NE(first.add(old, "rw"), 0U);
    old.close();
    const Fd fresh = counter(1);
    ASSERT_EQ(static_cast<int>(fresh), number);
    ASSERT_NE(second.add(fresh, "r"), 0U);
    EXPECT_EQ(csock_remove_fd(first.handle), -EINVAL);
    for (int i = 0; i < 3; ++i) {
        second.calls.clear();
        pass();
        EXPECT_EQ(second.calls, "r");
    }
    EXPECT_EQ(first.calls, "");
}

TEST_F(CsockContract, TheWaitIsNotEnteredTwice) {
    const Fd fd = counter(1);
    Watch watch;
    int result = 0;
    watch.then = [&result](char) { result = csock_select_with_msecs(0); };
    ASSERT_NE(watch.add(fd, "r"), 0U);
    pass();
    EXPECT_EQ(result, -EDEADLK);
    EXPECT_EQ(csock_remove_fd(watch.handle), 0);
}

// --- timers

constexpr int RELATIVE = CTIMER_TYPE_RELATIVE;

struct TestTimer {
    ctimerhandle handle{};
    std::string* fired = nullptr;
    char letter = 't';
    std::function<void()> then = [] {};

    static void on_end(ctimerhandle* handle, void* ctx) {
        auto* const timer = static_cast<TestTimer*>(ctx);
        EXPECT_EQ(handle->active, 0U);
        *timer->fired += timer->letter;
        timer->then();
    }
    int arm(uint32_t count, uint32_t units = 1000) {
        return ctimer_setup_internal(nullptr, &handle, RELATIVE, 0, count, units, on_end, this, 0,
                                     0);
    }
};

int64_t to_us(const ctimer_tval& time) { return int64_t{time.sec} * 1'000'000 + time.usec; }
int64_t now_us() {
    ctimer_tval now{};
    ctimer_elapsedtval(&now);
    return to_us(now);
}

class CtimerContract : public CsockContract {
protected:
    std::string fired;
    std::vector<TestTimer> timers{8};

    CtimerContract() {
        char letter = 'a';
        for (TestTimer& timer : timers) {
            timer.fired = &fired;
            timer.letter = letter++;
        }
    }
    ~CtimerContract() override {
        for (TestTimer& timer : timers) {
            ctimer_unsetup_internal(&timer.handle, RELATIVE);
        }
    }
    void run_until(std::size_t count) {
        for (int i = 0; i < 100 && fired.size() < count; ++i) {
            ASSERT_EQ(csock_select_with_msecs(1000), 0);
        }
    }
};

TEST_F(CtimerContract, FireInOrderAndNeverEarly) {
    const struct {
        uint32_t count, units;
    } rows[] = {{30, 1000}, {20, 1000}, {0, 1}, {1, 100}, {0, 1000}, {10, 1000}};
    const int64_t begin = now_us();
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        ASSERT_EQ(timers[i].arm(rows[i].count, rows[i].units), 0);
        const int64_t wait = int64_t{rows[i].count} * 1'000'000 / rows[i].units;
        timers[i].then = [begin, wait] { EXPECT_GE(now_us(), begin + wait); };
    }
    run_until(6);
    EXPECT_EQ(fired, "cedfba");
}

TEST_F(CtimerContract, ResultsOfEachCall) {
    ctimerhandle& handle = timers[0].handle;
    ctimer_tval end{-7, -7};
    EXPECT_EQ(ctimer_unsetup_internal(&handle, RELATIVE), -1);
    EXPECT_EQ(ctimer_endtval_internal(&handle, RELATIVE, &end), -1);
    EXPECT_EQ(timers[0].arm(1, 60), -1);
    EXPECT_EQ(timers[0].arm(1, 0), -1);
    EXPECT_EQ(
        ctimer_setup_internal(nullptr, &handle, 1, 0, 1, 1, TestTimer::on_end, &timers[0], 0, 0),
        -1);
    EXPECT_EQ(ctimer_setup_internal(nullptr, &handle, RELATIVE, 0, 1, 1, nullptr, nullptr, 0, 0),
              -1);
    EXPECT_EQ(ctimer_setup_internal(nullptr, nullptr, RELATIVE, 0, 1, 1, TestTimer::on_end, nullptr,
                                    0, 0),
              -3);
    EXPECT_EQ(ctimer_unsetup_internal(nullptr, RELATIVE), -3);
    EXPECT_EQ(ctimer_endtval_internal(nullptr, RELATIVE, &end), -3);

    ctimerhandle never{1, {1, 2, 3}};
    EXPECT_EQ(ctimer_unsetup_internal(&never, RELATIVE), -3);
    EXPECT_EQ(ctimer_endtval_internal(&never, RELATIVE, &end), -3);
    EXPECT_EQ(end.sec, -7);

    ASSERT_EQ(timers[0].arm(2'000'000'000, 1), 0);
    ctimerhandle copy = handle;
    const int64_t begin = now_us();
    EXPECT_EQ(ctimer_endtval_internal(&copy, RELATIVE, &end), -4);
    EXPECT_NEAR(static_cast<double>(to_us(end) - begin), 2e15, 60e6);
    EXPECT_EQ(ctimer_unsetup_internal(&copy, RELATIVE), -4);
    EXPECT_EQ(ctimer_endtval_internal(&handle, RELATIVE, &end), 0);
    EXPECT_EQ(ctimer_unsetup_internal(&handle, RELATIVE), 0);
    EXPECT_EQ(ctimer_unsetup_internal(&handle, RELATIVE), -1);

    ASSERT_EQ(timers[1].arm(0), 0);
    ASSERT_EQ(timers[2].arm(0), 0);
    timers[1].handle = {};
    timers[2].handle = {};
    EXPECT_EQ(ctimer_endtval_internal(&timers[1].handle, RELATIVE, &end), -2);
    EXPECT_EQ(ctimer_unsetup_internal(&timers[1].handle, RELATIVE), -2);
    EXPECT_EQ(ctimer_unsetup_internal(&timers[1].handle, RELATIVE), -1);
    ASSERT_EQ(csock_select_with_msecs(0), 0);
    EXPECT_EQ(fired, "") << "a handle that was overwritten does not fire";
}

TEST_F(CtimerContract, ACallbackMayArmStopAndReleaseTimers) {
    ASSERT_EQ(timers[0].arm(1), 0);
    ASSERT_EQ(timers[1].arm(1), 0);
    ASSERT_EQ(timers[2].arm(1), 0);
    timers[0].then = [this] {
        EXPECT_EQ(ctimer_unsetup_internal(&timers[1].handle, RELATIVE), 0);
        EXPECT_EQ(timers[0].arm(0), 0);
        EXPECT_EQ(timers[3].arm(0), 0);
        timers[0].then = [] {};
    };
    run_until(2);
    EXPECT_EQ(fired, "ac") << "what a callback arms waits for the next pass";
    run_until(4);
    EXPECT_EQ(fired, "acad");
}

TEST_F(CtimerContract, HeapKeepsTheOrderOfManyTimers) {
    std::vector<TestTimer> many(1000);
    std::vector<uint32_t> ends;
    uint32_t random = 1;
    for (TestTimer& timer : many) {
        random = random * 1664525 + 1013904223;
        const uint32_t end = random >> 24;
        timer.fired = &fired;
        ASSERT_EQ(timer.arm(end % 2 == 0 ? end : 5, 1000), 0);
        ASSERT_EQ(timer.arm(end / 8, 1000), 0) << "armed anew";
        if (end % 3 == 0) {
            ASSERT_EQ(ctimer_unsetup_internal(&timer.handle, RELATIVE), 0);
            continue;
        }
        timer.then = [&ends, end] { ends.push_back(end / 8); };
    }
    const auto left = static_cast<std::size_t>(
        std::count_if(many.begin(), many.end(), [](auto& timer) { return timer.handle.active; }));
    run_until(left);
    EXPECT_EQ(ends.size(), left);
    EXPECT_TRUE(std::is_sorted(ends.begin(), ends.end()));
}

}  // namespace
