// SPDX-License-Identifier: Apache-2.0
// What the test double promises beyond the contract.
#include "nuv_platform/fake/fake_platform.hpp"

#include <cerrno>
#include <chrono>

#include "nuv_platform/aicmd.h"
#include "nuv_platform/clock.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/csock.h"
#include "nuv_platform/ifwatch.h"
#include "nuv_platform/nuvipc.h"
#include "nuv_platform/vistrom.h"
#include "tests/support/test.hpp"

namespace nuv::platform {
namespace {

using Lines = std::vector<std::string>;

class FakePlatformTest : public testing::Test {
protected:
    FakePlatform& fake = *FakePlatform::current();
};

TEST_F(FakePlatformTest, ClockMovesReadingsAndLogTimesTogether) {
    using namespace std::chrono_literals;
    Lines lines;
    clogger* const logger = clogger_get(nullptr);
    const auto keep = [](void* ctx, const char* line) {
        static_cast<Lines*>(ctx)->emplace_back(line);
    };
    ASSERT_EQ(clogger_add_function(logger, keep, &lines, 0, 31, CLOGGER_FIELD_TIME), 0);
    clogger__err(logger, "f", "g", 1, "start");
    EXPECT_EQ(nuv_clock_monotonic_ns(), 1);
    fake.clock().advance(25h + 1500ms);
    clogger__err(logger, "f", "g", 1, "later");
    EXPECT_EQ(fake.clock().now(), 25h + 1500ms + 1ns);
    EXPECT_EQ(nuv_clock_monotonic_ns(), (25h + 1500ms + 2ns).count());
    EXPECT_EQ(nuv_clock_monotonic_ns(), (25h + 1500ms + 3ns).count());
    EXPECT_THROW(fake.clock().advance(-1ns), std::invalid_argument);
    EXPECT_EQ(clogger_rm_function(logger, keep, &lines), 0);
    EXPECT_EQ(lines, (Lines{"1970-01-01T00:00:00.000Z: start", "1970-01-02T01:00:01.500Z: later"}));
}

TEST_F(FakePlatformTest, EachServiceHasItsJournalAndItsRefusals) {
    std::array<std::uint8_t, 6> address{};
    fake.interfaces().set_hwaddr("wlan0", {2, 0, 0, 0, 0, 1});
    fake.interfaces().fail_next("if_get_hwaddr", -19);
    EXPECT_EQ(if_get_hwaddr("wlan0", address.data()), -19);
    EXPECT_EQ(if_get_hwaddr("wlan0", address.data()), 0);
    EXPECT_EQ(address[0], 2);

    fake.log().fail_next("clogger_alloc", 0);
    EXPECT_EQ(clogger_alloc("refused"), nullptr);
    EXPECT_EQ(fake.log().journal(), Lines{R"(clogger_alloc("refused"))"});
    EXPECT_EQ(fake.interfaces().journal(), Lines{});
    EXPECT_EQ(fake.journal(), fake.log().journal());

    EXPECT_THROW(fake.log().fail_next("if_get_hwaddr", -1), std::invalid_argument);
    EXPECT_THROW(fake.interfaces().fail_next("clogger_alloc", 0), std::invalid_argument);
    EXPECT_THROW(fake.clock().fail_next("nuv_clock_monotonic_ns", 0), std::invalid_argument);
}

TEST_F(FakePlatformTest, ReceiversThatAreNotRunFillUp) {
    const struct {
        unsigned size;
        int messages;
    } rows[] = {{0, 278},   {64, 278},    {1024, 93},          {16384, 11},
                {65536, 4}, {65537, 511}, {NUVIPC_MAX_SIZE, 2}};
    ASSERT_EQ(csock_init(), 0);
    nuvipc* const sender = nuvipc_create("sender");
    nuvipc* const receiver = nuvipc_create("receiver");
    int received = 0;
    nuvipc_msg_register(
        receiver,
        [](nuvipc*, const char*, void*, unsigned, void* ctx) { ++*static_cast<int*>(ctx); },
        &received, 0);
    const std::vector<char> data(NUVIPC_MAX_SIZE);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.size);
        int sent = 0;
        while (nuvipc_msg_send(sender, "receiver", data.data(), row.size) >= 0) {
            ++sent;
        }
        EXPECT_EQ(sent, row.messages);
        EXPECT_EQ(nuvipc_msg_send(sender, "sender", data.data(), row.size), 0)
            << "another receiver is not full";
        for (received = 0; sent > 0; sent -= received, received = 0) {
            csock_select_with_msecs(0);
            ASSERT_EQ(received, std::min(sent, 32)) << "in one pass";
        }
    }
    nuvipc_destroy(sender);
    nuvipc_destroy(receiver);
    csock_exit();
}

TEST_F(FakePlatformTest, RunsDebugCommands) {
    ASSERT_EQ(csock_init(), 0);
    EXPECT_THROW(fake.commands().run("app", "HELP"), std::runtime_error);
    nuvipc* const ipc = nuvipc_create("app");
    const aicmd_command commands[] = {
        {"FAIL", [](aicmd_session*, int, char**) { return -ENOENT; }, ""},
        {"QUIT", aicmd_quit, ""},
        {"LONG",
         [](aicmd_session* session, int, char**) {
             return aicmd_printf(session, "%200000s\n", "OK"), 0;
         },
         ""}};
    aicmd_listener listener = {"app", commands, 3, {}};
    ASSERT_EQ(aicmd_listen_start(ipc, &listener, 0, 0, 0, 0, 0), 0);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(fake.commands().run("app", "FAIL"), "ERROR No such file or directory\n");
    }
    EXPECT_EQ(fake.commands().run("app", "quit"), "OK\n");
    EXPECT_EQ(fake.commands().run("app", "LONG").size(), 200004U);
    EXPECT_EQ(fake.loop().registered(), Lines{"endpoint app"}) << "the sessions have ended";
    nuvipc_destroy(ipc);
    EXPECT_THROW(fake.commands().run("app", "FAIL"), std::runtime_error);
    csock_exit();
}

TEST_F(FakePlatformTest, TheBootEnvironmentIsTheTests) {
    EXPECT_EQ(vistrom_getenv("maca"), nullptr);
    fake.environment().set("maca", "02:00:00:00:00:01");
    EXPECT_STREQ(vistrom_getenv("maca"), "02:00:00:00:00:01");
    fake.environment().fail_next("vistrom_getenv", 0);
    EXPECT_EQ(vistrom_getenv("maca"), nullptr);
}

}  // namespace
}  // namespace nuv::platform
