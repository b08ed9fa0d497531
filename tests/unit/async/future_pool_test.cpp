// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/future_pool.hpp"

#include <thread>

#include "nuv_platform/clog.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/test.hpp"

namespace nuv::async {
namespace {

using Texts = std::vector<std::string>;

class FuturePoolTest : public testing::Test {
protected:
    FuturePoolTest() { clogmod_set_loglevel(clogmod_get_or_alloc("future_pool"), CLOGGER_DEBUG); }

    // A future that is ready with this value.
    static std::future<int> ready(int value) {
        std::promise<int> promise;
        promise.set_value(value);
        return promise.get_future();
    }
    FutureConnection add(int value) {
        return pool.add(ready(value), [this](std::future<int> result) {
            sum += result.get();
            then();
        });
    }
    // The records since the last call, addresses left out.
    Texts logged() {
        Texts texts = fake.log().texts();
        fake.log().clear_records();
        for (std::string& text : texts) {
            if (const auto at = text.find("=0x"); at != std::string::npos) {
                text.replace(at + 1, text.find(' ', at) - at - 1, "*");
            }
        }
        return texts;
    }

    platform::FakePlatform fake;
    FuturePool pool;
    int sum = 0;
    std::function<void()> then = [] {};
};

TEST_F(FuturePoolTest, HandsOutWhatIsReadyAndWanted) {
    std::promise<int> pending;
    pool.add(pending.get_future(), [this](std::future<int> result) { sum += result.get(); });
    add(1);
    FutureConnection unwanted = add(10);
    EXPECT_TRUE(unwanted.connected());
    EXPECT_TRUE(unwanted.disconnect());
    pool.add(std::async(std::launch::deferred, [] { return 0; }), [](std::future<int>) { FAIL(); });
    EXPECT_TRUE(pool.process_futures());
    EXPECT_EQ(sum, 1);
    EXPECT_EQ(logged(), (Texts{"status of future_wrapper_base=* is std::future_status::ready",
                               "status of future_wrapper_base=* is std::future_status::deferred",
                               "Processed 4 (2 left)"}));
    EXPECT_FALSE(unwanted.connected() || unwanted.disconnect());
    pending.set_value(100);
    EXPECT_TRUE(pool.process_futures());
    EXPECT_EQ(sum, 101);
    logged();
    pool.clear_futures();
    EXPECT_FALSE(pool.process_futures());
    EXPECT_EQ(logged(), (Texts{"_futures.size()=1", "Processed 0 (0 left)"}));
}

TEST_F(FuturePoolTest, HandlersMayChangeThePool) {
    then = [this] { sum < 100 ? void(add(1)) : void(); };
    add(1), add(2);
    EXPECT_TRUE(pool.process_futures());
    EXPECT_EQ(sum, 3) << "what handlers add waits for the next pass";
    EXPECT_EQ(pool.count_futures(), 2U);
    then = [this] {
        pool.clear_futures();
        add(5);
    };
    EXPECT_TRUE(pool.process_futures());
    EXPECT_EQ(sum, 4);
    then = [] { throw std::runtime_error("x"); };
    add(7);
    logged();
    EXPECT_THROW(pool.process_futures(), std::runtime_error);
    EXPECT_EQ(pool.count_futures(), 1U) << "the future whose handler threw is gone";
    EXPECT_EQ(logged().size(), 1U) << "without the last line";
    then = [this] { pool.finish(); };
    EXPECT_FALSE(pool.process_futures());
    EXPECT_FALSE(add(1).connected());
    EXPECT_EQ(pool.count_futures(), 0U);
}

TEST_F(FuturePoolTest, ScopedConnectionsDisconnect) {
    FutureConnection plain = add(1);
    {
        ScopedFutureConnection scoped(add(2));
        ScopedFutureConnection moved(std::move(scoped));
        EXPECT_TRUE(moved.connected());
        moved = add(4);
        scoped = plain;
        plain = {};
        scoped = std::move(moved);
        EXPECT_TRUE(scoped.connected());
        pool.process_futures();
    }
    EXPECT_EQ(sum, 4);
}

TEST_F(FuturePoolTest, FuturesAreFulfilledByOtherThreads) {
    std::promise<int> promise;
    pool.add(promise.get_future(), [this](std::future<int> result) { sum = result.get(); });
    std::thread worker([&promise] { promise.set_value(3); });
    while (pool.process_futures()) {
    }
    worker.join();
    EXPECT_EQ(sum, 3);
}

}  // namespace
}  // namespace nuv::async
