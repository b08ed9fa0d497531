// SPDX-License-Identifier: Apache-2.0
#include "nuv/mainloop.hpp"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <future>
#include <iostream>
#include <thread>

#include "nuv/async/future_pool.hpp"
#include "nuv/i_simple_fd_watch.hpp"
#include "nuv/time/timer_error.hpp"
#include "nuv_platform/clog.h"
#include "nuv_platform/csock.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv::daemon {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;
using platform::FakePlatform;

constexpr auto FOREVER = Mainloop::DEFAULT_RUN_TIMEOUT;

// Readable from the beginning; leaves the rest to `then`.
class Watch : public ISimpleFDWatch {
public:
    explicit Watch(std::function<void()> function = [] {})
        : Watch(::eventfd(1, EFD_CLOEXEC | EFD_NONBLOCK), std::move(function)) {}
    ~Watch() override { ::close(opened_); }
    int on_readable() override { return then(), 0; }
    int on_writable() override { return 0; }
    void remove_from_csock() override {
        ISimpleFDWatch::remove_from_csock();
        on_removal();
    }

    std::function<void()> then;
    std::function<void()> on_removal = [] {};

private:
    Watch(int fd, std::function<void()> function)
        : ISimpleFDWatch(fd, "watch " + std::to_string(count++)),
          then(std::move(function)),
          opened_(fd) {}

    static inline int count = 0;
    int opened_;
};

class MainloopTest : public testing::Test {
protected:
    MainloopTest() { clogmod_set_loglevel(clogmod_get_or_alloc("mainloop"), CLOGGER_DEBUG); }
    ~MainloopTest() override { EXPECT_EQ(fake.leftovers(), Lines{}); }

    // The calls since the last time.
    Lines calls() {
        const auto& journal = fake.journal();
        Lines fresh(journal.begin() + static_cast<std::ptrdiff_t>(seen_), journal.end());
        seen_ = journal.size();
        return fresh;
    }
    Lines logged() {
        Lines texts = fake.log().texts();
        fake.log().clear_records();
        return texts;
    }
    void pass() {
        for (int i = 0; i < 3; ++i) {
            csock_select_with_msecs(0);
        }
    }

    FakePlatform fake;

private:
    std::size_t seen_ = fake.journal().size() + 1;  // with the log level
};

TEST_F(MainloopTest, CallsThePlatformInOrder) {
    const Lines begin = {"csock_init()", R"(nuvipc_create("app"))",
                         R"(nuvipc_msg_register("app", *, NULL, 0))",
                         R"(aicmd_listen_start("app", "app", 0, 0, 0, 0, 0))"};
    const Lines start = {"daemon_start(0, 0)",
                         "ctimer_setup_internal(NULL, *, 2, 0, 15, 1, *, *, 0, 0)"};
    const Lines last = {"ctimer_setup_internal(NULL, *, 2, 0, 1, 1, *, *, 0, 0)",
                        R"(watchdog_csock_init("app"))"};
    const Lines stop = {"ctimer_unsetup_internal(*, 2)"};
    const Lines end = {R"(nuvipc_msg_unregister("app"))", R"(nuvipc_destroy("app"))",
                       "csock_exit()"};
    const auto join = [](std::initializer_list<Lines> parts) {
        Lines all;
        for (const Lines& part : parts) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    };
    const struct {
        bool daemonize;
        bool managed;
        Lines constructed;
        Lines destroyed;
    } rows[] = {
        {false, false, join({begin, last}), join({stop, {"watchdog_csock_exit()"}, end})},
        {true, false, join({begin, start, last}),
         join({stop, {"watchdog_csock_exit()"}, stop, end})},
        {true, true, {}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.constructed.size());
        {
            const Mainloop loop("app", row.daemonize, row.managed);
            EXPECT_EQ(calls(), row.constructed);
        }
        EXPECT_EQ(calls(), row.destroyed);
    }
}

TEST_F(MainloopTest, EachFailureInConstructionLeavesNothingBehind) {
    const struct {
        platform::FakeService& service;
        const char* call;
        int result;
        bool throws;
        const char* text;
        Lines undone;
    } rows[] = {
        {fake.loop(), "csock_init", -EMFILE, true, "csock_init() failed", {"csock_init()"}},
        {fake.ipc(),
         "nuvipc_create",
         0,
         true,
         R"(nuvipc_create() failed - program with ipc endpoint "app" might already be running)",
         {R"(nuvipc_create("app"))", "csock_exit()"}},
        {fake.ipc(),
         "nuvipc_msg_register",
         -ENOMEM,
         false,
         "nuvipc_msg_register() failed with error code -12",
         {}},
        {fake.commands(),
         "aicmd_listen_start",
         -EMFILE,
         true,
         "aicmd_listen_start() failed with error code -24",
         {R"(aicmd_listen_start("app", "app", 0, 0, 0, 0, 0))", R"(nuvipc_msg_unregister("app"))",
          R"(nuvipc_destroy("app"))", "csock_exit()"}},
        {fake.daemon(),
         "daemon_start",
         -EAGAIN,
         false,
         "daemon_start() failed with error code -11",
         {}},
        {fake.loop(),
         "ctimer_setup_internal",
         -2,
         true,
         "Resource problem",
         {"ctimer_setup_internal(NULL, *, 2, 0, 15, 1, *, *, 0, 0)",
          R"(nuvipc_msg_unregister("app"))", R"(nuvipc_destroy("app"))", "csock_exit()"}},
        {fake.watchdog(),
         "watchdog_csock_init",
         -EPERM,
         false,
         "watchdog_csock_init() failed with error code -1",
         {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.call);
        row.service.fail_next(row.call, row.result);
        const std::string thrown =
            test::message_of<std::runtime_error>([] { const Mainloop loop("app", true, false); });
        EXPECT_EQ(thrown, row.throws ? row.text : "");
        EXPECT_EQ(logged(), row.throws ? Lines{} : Lines{row.text});
        const Lines journal = calls();
        EXPECT_TRUE(std::equal(row.undone.rbegin(), row.undone.rend(), journal.rbegin()));
        EXPECT_EQ(fake.leftovers(), Lines{});
    }
    EXPECT_EQ(test::message_of<std::runtime_error>([] { Mainloop(R"(a"\)", false, false); }),
              R"(nuvipc_create() failed - program with ipc endpoint "a\"\\" )"
              "might already be running");
}

TEST_F(MainloopTest, WithoutANameItIsNamedAfterProcessAndThread) {
    std::ostringstream expected;
    expected << "app_" << ::getpid() << std::this_thread::get_id();
    EXPECT_EQ(Mainloop("", false, false).get_name(), expected.str());
}

TEST_F(MainloopTest, GetMakesOneLoopAndDestroysItAtExit) {
    EXPECT_EXIT(
        {
            const Mainloop& first = Mainloop::get("", false, false);
            const Mainloop& second = Mainloop::get("other", true, true);
            std::cerr << (&first == &second) << second.get_name();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "1app_");
}

TEST_F(MainloopTest, TheFirstRunReportsReadyEvenWhenFinished) {
    for (const bool finished : {false, true}) {
        Mainloop loop("app", true, false);
        if (finished) {
            loop.finish();
        }
        calls();
        EXPECT_EQ(loop.run(0ms), FOREVER);
        EXPECT_EQ(calls(), (Lines{"ctimer_unsetup_internal(*, 2)", "daemon_ready()"}));
        loop.run(0ms);
        EXPECT_EQ(calls(), Lines{});
        EXPECT_EQ(logged(),
                  finished ? Lines(2, "Attempting to run a finished mainloop, ignore") : Lines{});
    }
    Mainloop loop("app", false, false);
    fake.daemon().fail_next("daemon_start", -7);
    calls();
    EXPECT_EQ(loop.daemonize(true, false), -7);
    EXPECT_EQ(calls(), Lines{"daemon_start(1, 0)"});
    EXPECT_EQ(loop.daemonize(false, true), 0);
    EXPECT_EQ(loop.daemonize(false, true), 0) << "the time begins anew";
    EXPECT_EQ(fake.loop().armed_timers(), 2U);
}

TEST_F(MainloopTest, ATimerThatCannotBeStoppedNeitherThrowsNorFires) {
    {
        Mainloop loop("app", true, false);
        fake.loop().fail_next("ctimer_unsetup_internal", -2);
        EXPECT_EQ(loop.run(0ms), FOREVER);
        EXPECT_EQ(fake.journal().back(), "daemon_ready()");
        fake.clock().advance(20s);
        EXPECT_EQ(csock_select_with_msecs(0), 0) << "the process has not exited";
        fake.loop().fail_next("ctimer_unsetup_internal", -3);
        EXPECT_THROW(loop.clear(), time::TimerError);
        fake.loop().fail_next("ctimer_unsetup_internal", -4);
    }
    EXPECT_EQ(logged(), Lines{});
}

TEST_F(MainloopTest, ADaemonThatIsNotReadyAfter15SecondsExits) {
    EXPECT_EXIT(
        {
            const Mainloop loop("app", true, false);
            std::atexit([] {
                auto& at_exit = *FakePlatform::current();
                std::cerr << at_exit.journal().back() << at_exit.clock().now() / 1s << 's';
            });
            for (int i = 0; i < 20; ++i) {
                csock_select_with_msecs(1000);
            }
        },
        testing::ExitedWithCode(1), "daemon_start_failed\\(\\)15s");
}

TEST_F(MainloopTest, HousekeepingRunsEachSecondUntilCleared) {
    Mainloop loop("app", false, false);
    loop.add_watch(std::make_shared<Watch>());
    calls();
    while (fake.clock().now() < 3500ms) {
        loop.run(500ms);
        fake.clock().advance(100ms);
    }
    const Lines journal = calls();
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "slab_reap()"), 3);
    loop.trigger_watchdog();
    EXPECT_EQ(calls(), Lines{"watchdog_csock_trigger()"});
    loop.clear();
    EXPECT_EQ(loop.count_watches(), 0U);
    EXPECT_EQ(fake.loop().armed_timers(), 0U);
}

TEST_F(MainloopTest, ThePassIsShortWhileFuturesArePending) {
    Mainloop loop("app", false, false);
    EXPECT_EQ(loop.run(0ms), FOREVER);
    std::promise<int> promise;
    int result = 0;
    async::get_global_future_pool().add(promise.get_future(),
                                        [&](std::future<int> ready) { result = ready.get(); });
    EXPECT_EQ(loop.count_futures(), 1U);
    EXPECT_EQ(loop.run(0ms), 1ms);
    promise.set_value(5);
    EXPECT_EQ(loop.run(1ms), FOREVER);
    EXPECT_EQ(result, 5);
    EXPECT_EQ(loop.run(std::chrono::milliseconds((std::int64_t{1} << 32) + 2)), FOREVER);
    EXPECT_EQ(fake.clock().now() / 1ms, 3) << "the low 32 bits of the timeout count";
    fake.loop().fail_next("csock_select_with_msecs", -EIO);
    EXPECT_EQ(loop.run(0ms), FOREVER);
}

TEST_F(MainloopTest, FinishComesFromAnotherThread) {
    Mainloop loop("app", false, false);
    std::thread other([&loop] { loop.finish(); });
    while (!loop.finished()) {
        loop.run(FOREVER);
    }
    other.join();
}

TEST_F(MainloopTest, WatchesAreFoundByIdentity) {
    Mainloop loop("app", false, false);
    const auto a = std::make_shared<Watch>();
    const auto b = std::make_shared<Watch>();
    const auto c = std::make_shared<Watch>();
    std::string removed;
    for (const auto& [watch, letter] : {std::pair(a, 'a'), std::pair(b, 'b'), std::pair(c, 'c')}) {
        EXPECT_TRUE(loop.add_watch(watch));
        watch->on_removal = [&removed, letter = letter] { removed += letter; };
    }
    EXPECT_TRUE(loop.remove_watch(b));
    EXPECT_FALSE(loop.remove_watch(b));
    EXPECT_FALSE(loop.remove_watch(nullptr));
    loop.add_watch(a);
    EXPECT_EQ(loop.count_watches(), 3U) << "a watch added twice is kept twice";
    fake.loop().fail_next("csock_add_fd", 0);
    EXPECT_TRUE(loop.add_watch(std::make_shared<Watch>()));
    a->on_removal = [&] {
        removed += 'a';
        loop.remove_watch(c);
    };
    loop.remove_watches();
    EXPECT_EQ(removed, "baca");
    EXPECT_EQ(loop.count_watches(), 0U);
}

TEST_F(MainloopTest, HandlersMayRemoveAnyWatch) {
    Mainloop loop("app", false, false);
    std::weak_ptr<Watch> other;
    const std::function<void()> removals[] = {
        [&] { EXPECT_TRUE(loop.remove_watch(other.lock())); },
        [&] { loop.remove_watches(); },
        [&] { loop.clear(); },
    };
    for (const auto& removal : removals) {
        int calls = 0;
        const auto handle = [&, text = std::string(40, 'x')] {
            ++calls;
            removal();
            EXPECT_EQ(loop.run(0ms), FOREVER) << "a run inside the pass destroys nothing, either";
            EXPECT_FALSE(other.expired());
            EXPECT_EQ(text[39], 'x') << "what the handler captured lives on";
        };
        auto watch = std::make_shared<Watch>(handle);
        other = watch;
        loop.add_watch(std::move(watch));
        loop.run(0ms);
        loop.run(0ms);
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(loop.count_watches(), 0U);
        EXPECT_TRUE(other.expired());
    }
}

void keep(nuvipc* /*ipc*/, const char* name, void* data, unsigned size, void* ctx) {
    static_cast<Lines*>(ctx)->push_back(std::string(name) + '=' +
                                        std::string(static_cast<const char*>(data), size));
}

TEST_F(MainloopTest, SendsAndReceivesMessagesAndEvents) {
    using namespace std::string_literals;
    // A managed loop uses the endpoint of its host.
    for (const bool managed : {false, true}) {
        SCOPED_TRACE(managed);
        if (managed) {
            ASSERT_EQ(daemonmng_init("app"), 0);
        }
        auto loop = std::make_unique<Mainloop>("app", false, managed);
        EXPECT_EQ(loop->get_nuvipc() == daemonmng_get_nuvipc(), managed);
        Lines received;
        nuvipc* const peer = nuvipc_create("peer");
        nuvipc_msg_register(peer, keep, &received, 0);
        EXPECT_EQ(loop->register_nuvipc_event_notifier("e", keep, &received), 0);
        EXPECT_EQ(loop->register_nuvipc_event_notifier("e", keep, &received), -EEXIST);
        EXPECT_TRUE(loop->send_nuvipc_message("peer", "text"));
        EXPECT_TRUE(loop->send_nuvipc_event("e", "data", 3));
        EXPECT_EQ(received, Lines{});
        pass();
        std::sort(received.begin(), received.end());
        EXPECT_EQ(received, (Lines{"app=text\0"s, "e=dat"}));
        EXPECT_EQ(loop->unregister_nuvipc_event_notifier("e"), 0);
        EXPECT_EQ(loop->unregister_nuvipc_event_notifier("e"), -ENOENT);

        EXPECT_FALSE(loop->send_nuvipc_message("no\"body", R"(te\xt)"));
        fake.ipc().fail_next("nuvipc_event_send", -EAGAIN);
        EXPECT_FALSE(loop->send_nuvipc_event("e\\", nullptr, 0));
        EXPECT_EQ(logged(),
                  (Lines{R"(Failed to send nuvipc message "te\\xt" to destination )"
                         R"("no\"body")",
                         R"(Failed to send nuvipc event "e\\" with parameter of size 0)"}));
        if (!managed) {
            nuvipc_msg_send(peer, "app", "with", 5);
            nuvipc_msg_send(peer, "app", "without", 7);
            nuvipc_msg_send(peer, "app", nullptr, 0);
            pass();
            EXPECT_EQ(logged(),
                      (Lines{"msg receive from=peer: with", "msg receive from=peer: without",
                             "msg receive from=peer: "}));
        }
        nuvipc_destroy(peer);
        loop.reset();
        daemonmng_exit();
    }
}

TEST_F(MainloopTest, DebugCommandsOfAManagedLoopAreAnsweredByItsHost) {
    ASSERT_EQ(daemonmng_init("host"), 0);
    {
        Mainloop host("app", false, false);
        Mainloop loop("guest", false, true);
        const auto module = loop.create_aicmd_module("module", nullptr);
        EXPECT_EQ(loop.get_aicmd_module("module"), module);
        module->add_command("HELLO", "greet", [](aicmd_session* session, int, char**) {
            return aicmd_printf(session, "hello\n"), 0;
        });
        EXPECT_TRUE(module->start());
        EXPECT_EQ(fake.commands().run("app", "hello"), "hello\nOK\n");
        EXPECT_TRUE(loop.remove_aicmd_module("module"));
        EXPECT_TRUE(module->started()) << "it has another owner";
    }
    daemonmng_exit();
}

TEST(FakePlatformLeaks, AreReportedAndALoopMayOutliveItsPlatform) {
    auto fake = std::make_unique<FakePlatform>();
    const Mainloop loop("app", false, false);
    testing::internal::CaptureStderr();
    fake.reset();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "FakePlatform: never undone: endpoint \"app\"\n"
              "FakePlatform: never undone: watchdog_csock_init(\"app\")\n"
              "FakePlatform: never undone: csock_init()\n"
              "FakePlatform: never undone: descriptor \"endpoint app\" is registered\n"
              "FakePlatform: never undone: 1 timers are armed\n");
}

}  // namespace
}  // namespace nuv::daemon
