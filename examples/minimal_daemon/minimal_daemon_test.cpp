// SPDX-License-Identifier: Apache-2.0
// The unit test of a daemon: the platform is the test double, time is virtual, nothing waits.
#include "minimal_daemon.hpp"

#include <gtest/gtest.h>

#include "nuv_platform/fake/fake_platform.hpp"

TEST(MinimalDaemon, CountsAndEndsOnASignal) {
    nuv::platform::FakePlatform fake;
    {
        MinimalDaemon daemon;
        daemon.loop.run(std::chrono::milliseconds(0));
        EXPECT_EQ(fake.daemon().journal().back(), "daemon_ready()");

        nuvipc* const peer = nuvipc_create("peer");
        nuvipc_event_send(peer, "greeting", nullptr, 0);
        while (fake.clock().now() < std::chrono::milliseconds(2500)) {
            daemon.loop.run(std::chrono::milliseconds(500));
        }
        EXPECT_EQ(fake.commands().run("minimal", "status"), "2 s, 1 greetings\nOK\n");
        nuvipc_destroy(peer);

        ::raise(SIGTERM);
        daemon.loop.run(nuv::daemon::Mainloop::DEFAULT_RUN_TIMEOUT);
        EXPECT_TRUE(daemon.loop.finished());
    }
    EXPECT_EQ(fake.leftovers(), std::vector<std::string>{});
}
