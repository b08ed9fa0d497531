// SPDX-License-Identifier: Apache-2.0
#include <sys/socket.h>
#include <unistd.h>

#include "nuv/i_generic_fd_watch.hpp"
#include "nuv/i_simple_fd_watch.hpp"
#include "nuv_platform/csock.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/test.hpp"

namespace nuv::daemon {
namespace {

using Lines = std::vector<std::string>;

// Notes what is called as letters.
struct Simple : ISimpleFDWatch {
    using ISimpleFDWatch::ISimpleFDWatch;
    int on_readable() override { return called('r'); }
    int on_writable() override { return called('w'); }
    int called(char letter) {
        calls += letter;
        then();
        return 0;
    }
    std::string calls;
    std::function<void()> then = [] {};
};
struct Generic : IGenericFDWatch {
    using IGenericFDWatch::IGenericFDWatch;
    int on_readable() override { return calls += 'r', 0; }
    int on_writable() override { return calls += 'w', 0; }
    int on_fd_callback_3() override { return calls += '3', 0; }
    int on_fd_callback_4() override { return calls += '4', 0; }
    std::string calls;
};

class IFDWatchTest : public testing::Test {
protected:
    IFDWatchTest() {
        csock_init();
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds.data()), 0);
    }
    ~IFDWatchTest() override {
        ::close(fds[0]);
        ::close(fds[1]);
        csock_exit();
        EXPECT_EQ(fake.leftovers(), Lines{});
    }
    // The calls since the last time.
    Lines calls() {
        Lines fresh(fake.journal().begin() + seen_, fake.journal().end());
        seen_ += static_cast<std::ptrdiff_t>(fresh.size());
        return fresh;
    }

    platform::FakePlatform fake;
    std::array<int, 2> fds{};

private:
    std::ptrdiff_t seen_ = 1;  // after csock_init()
};

TEST_F(IFDWatchTest, RegistersItsHandlersInOrder) {
    {
        Simple simple(fds[0], "simple");
        Generic generic(fds[1], "generic");
        IWatchBase& first = simple;
        first.add_to_csock();
        generic.add_to_csock();
        EXPECT_EQ(calls(), (Lines{R"(csock_add_fd(fd, "simple", *, *, NULL, NULL, 0, *))",
                                  R"(csock_fd_blocking("simple"))",
                                  R"(csock_add_fd(fd, "generic", *, *, *, *, 0, *))",
                                  R"(csock_fd_blocking("generic"))"}));
        csock_select_with_msecs(0);
        EXPECT_EQ(simple.calls, "w");
        EXPECT_EQ(generic.calls, "w");
        EXPECT_EQ(::write(fds[1], "x", 1), 1);
        EXPECT_EQ(::shutdown(fds[0], SHUT_RDWR), 0);
        simple.calls.clear();
        generic.calls.clear();
        csock_select_with_msecs(0);
        std::erase(simple.calls, 'w');  // may come without need
        std::erase(generic.calls, 'w');
        EXPECT_EQ(simple.calls, "r");
        EXPECT_EQ(generic.calls, "r4");
    }
    EXPECT_EQ(calls(), (Lines{R"(csock_remove_fd("generic"))", R"(csock_remove_fd("simple"))"}));
}

TEST_F(IFDWatchTest, LeavesTheLoopOnce) {
    {
        Simple watch(fds[0], "w");
        watch.add_to_csock();
        watch.add_to_csock();
        EXPECT_EQ(watch.get_fd(), fds[0]) << "a watch that is added again keeps its descriptor";
        watch.remove_from_csock();
        EXPECT_EQ(watch.get_fd(), -1);
        watch.remove_from_csock();
        watch.add_to_csock();
    }
    EXPECT_EQ(
        calls(),
        (Lines{R"(csock_add_fd(fd, "w", *, *, NULL, NULL, 0, *))", R"(csock_fd_blocking("w"))",
               R"(csock_remove_fd("w"))", R"(csock_add_fd(fd, "w", *, *, NULL, NULL, 0, *))",
               R"(csock_fd_blocking("w"))", R"(csock_remove_fd("w"))",
               R"(csock_add_fd(fd, "w", *, *, NULL, NULL, 0, *))", "csock_fd_blocking(NULL)"}));
}

TEST_F(IFDWatchTest, AHandlerMayDestroyItsWatch) {
    auto watch = std::make_unique<Simple>(fds[0], "w");
    std::string seen;
    watch->then = [&, capture = std::string(40, 'x')] {
        const std::string kept = capture;
        std::string& out = seen;  // this function goes with the watch
        watch.reset();
        out += kept[39];
    };
    watch->add_to_csock();
    EXPECT_EQ(::write(fds[1], "x", 1), 1);
    csock_select_with_msecs(0);
    EXPECT_EQ(seen, "x") << "once, although it was readable and writable";
}

}  // namespace
}  // namespace nuv::daemon
