// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/nuvipc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

#include "nuv_platform/csock.h"
#include "nuv_platform/ctimer.h"

namespace {

using Lines = std::vector<std::string>;

constexpr unsigned LARGE = 65537;  // the smallest size that is confirmed

// A timer that ends a wait for what does not come.
class Deadline {
public:
    Deadline() {
        const auto ring = [](ctimerhandle* /*handle*/, void* over) {
            *static_cast<bool*>(over) = true;
        };
        EXPECT_EQ(ctimer_setup_internal(nullptr, &timer_, CTIMER_TYPE_RELATIVE, 0, 5, 1, ring,
                                        &over_, 0, 0),
                  0);
    }
    ~Deadline() { ctimer_unsetup_internal(&timer_, CTIMER_TYPE_RELATIVE); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
    bool over() const { return over_; }

private:
    ctimerhandle timer_{};
    bool over_ = false;
};

void pass_until(const std::function<bool()>& done) {
    const Deadline deadline;
    while (!done() && !deadline.over()) {
        ASSERT_EQ(csock_select_with_msecs(-1), 0);
    }
    EXPECT_FALSE(deadline.over());
}

// An endpoint that writes down what it gets: "sender: text" and "[event] text".
struct Endpoint {
    explicit Endpoint(const char* name) : ipc(nuvipc_create(name)) {
        EXPECT_NE(ipc, nullptr);
        EXPECT_EQ(nuvipc_msg_register(ipc, on_message, this, 0), 0);
    }
    ~Endpoint() { nuvipc_destroy(ipc); }
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    static std::string text(const void* data, unsigned size) {
        std::string content(static_cast<const char*>(data), size);
        return size < 100 ? content : "size " + std::to_string(size) + content.substr(size - 3);
    }
    static void on_message(nuvipc* ipc, const char* sender, void* data, unsigned size, void* ctx) {
        auto* const self = static_cast<Endpoint*>(ctx);
        EXPECT_EQ(ipc, self->ipc);
        self->got.push_back(std::string(sender) + ": " + text(data, size));
        self->then();
    }
    static void on_event(nuvipc* ipc, const char* event, void* data, unsigned size, void* ctx) {
        auto* const self = static_cast<Endpoint*>(ctx);
        EXPECT_EQ(ipc, self->ipc);
        self->got.push_back("[" + std::string(event) + "] " + text(data, size));
        self->then();
    }

    int send(const char* to, const std::string& data) const {
        return nuvipc_msg_send(ipc, to, data.data(), static_cast<unsigned>(data.size()));
    }
    int emit(const char* event, const std::string& data) const {
        return nuvipc_event_send(ipc, event, data.data(), static_cast<unsigned>(data.size()));
    }
    int notify(const char* event) {
        return nuvipc_event_register_notifier(ipc, event, on_event, this);
    }
    void wait_for(std::size_t count) {
        pass_until([&] { return ipc == nullptr || got.size() >= count; });
    }

    nuvipc* ipc;
    Lines got;
    std::function<void()> then = [] {};
};

class NuvipcContract : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(csock_init(), 0); }
    void TearDown() override { csock_exit(); }
};

TEST_F(NuvipcContract, ChecksNamesHandlesAndSizes) {
    const std::string longest(64, 'n');
    for (const std::string& name :
         {std::string(), std::string("-a"), std::string(".a"), std::string("a/b"), longest + "n",
          std::string("a.lock"), std::string("a.new"), std::string("a.events"),
          std::string("a.cmd"), std::string("\xc3\xa4")}) {
        EXPECT_EQ(nuvipc_create(name.c_str()), nullptr) << name;
    }
    EXPECT_EQ(nuvipc_create(nullptr), nullptr);
    Endpoint one("_1.2-3");
    const Endpoint longest_name(longest.c_str());
    EXPECT_EQ(nuvipc_create("_1.2-3"), nullptr) << "it has an owner";

    EXPECT_EQ(one.send("nobody", "x"), -ENOENT);
    for (const char* const wrong : {"", "a/b", "a.lock", "nobody!"}) {
        EXPECT_EQ(one.send(wrong, "x"), -EINVAL) << wrong;
    }
    EXPECT_EQ(nuvipc_msg_send(one.ipc, nullptr, "x", 1), -EINVAL);
    EXPECT_EQ(nuvipc_msg_send(one.ipc, "_1.2-3", nullptr, 1), -EINVAL);
    const std::string too_much(NUVIPC_MAX_SIZE + 1, 'x');
    EXPECT_EQ(one.send(longest.c_str(), too_much), -EMSGSIZE);
    EXPECT_EQ(one.emit("e", too_much), -EMSGSIZE);

    for (const std::string& event : {std::string(), std::string("a\n"), std::string("\x7f"),
                                     std::string("a*"), std::string(65, 'e')}) {
        EXPECT_EQ(one.emit(event.c_str(), "x"), -EINVAL) << event;
        EXPECT_EQ(one.notify(event.c_str()), -EINVAL) << event;
    }
    EXPECT_EQ(one.emit("*", "x"), -EINVAL);
    EXPECT_EQ(nuvipc_event_send(one.ipc, nullptr, "x", 1), -EINVAL);
    EXPECT_EQ(nuvipc_event_send(one.ipc, "e", nullptr, 1), -EINVAL);
    EXPECT_EQ(nuvipc_event_register_notifier(one.ipc, "e", nullptr, nullptr), -EINVAL);
    EXPECT_EQ(one.notify("e \xc3\xa4"), 0);
    EXPECT_EQ(one.notify("e \xc3\xa4"), -EEXIST);
    EXPECT_EQ(nuvipc_event_unregister_notifier(one.ipc, "e \xc3\xa4"), 0);
    EXPECT_EQ(nuvipc_event_unregister_notifier(one.ipc, "e \xc3\xa4"), -ENOENT);
    EXPECT_EQ(nuvipc_event_unregister_notifier(one.ipc, nullptr), -EINVAL);

    EXPECT_EQ(nuvipc_msg_register(one.ipc, Endpoint::on_message, nullptr, 0), -EEXIST);
    EXPECT_EQ(nuvipc_msg_unregister(one.ipc), 0);
    EXPECT_EQ(nuvipc_msg_unregister(one.ipc), -ENOENT);
    EXPECT_EQ(nuvipc_msg_register(one.ipc, nullptr, nullptr, 0), -EINVAL);

    EXPECT_EQ(nuvipc_msg_register(nullptr, Endpoint::on_message, nullptr, 0), -EINVAL);
    EXPECT_EQ(nuvipc_msg_unregister(nullptr), -EINVAL);
    EXPECT_EQ(nuvipc_msg_send(nullptr, "a", "x", 1), -EINVAL);
    EXPECT_EQ(nuvipc_event_send(nullptr, "a", "x", 1), -EINVAL);
    EXPECT_EQ(nuvipc_event_register_notifier(nullptr, "a", Endpoint::on_event, nullptr), -EINVAL);
    EXPECT_EQ(nuvipc_event_unregister_notifier(nullptr, "a"), -EINVAL);
    EXPECT_EQ(nuvipc_list(nullptr, nullptr), -EINVAL);
    nuvipc_destroy(nullptr);
}

TEST_F(NuvipcContract, KeepsContentBoundariesAndOrder) {
    Endpoint sender("sender");
    Endpoint receiver("receiver");
    ASSERT_EQ(receiver.notify("e"), 0);
    std::string large(LARGE, '.');
    large.replace(LARGE - 3, 3, "end");
    std::string most;
    most.resize(NUVIPC_MAX_SIZE, '!');
    const std::string inline_most(65536, 'i');
    for (const std::string& data : {std::string("a"), std::string(), std::string("b\0c", 3), large,
                                    inline_most, std::string("d")}) {
        EXPECT_EQ(sender.send("receiver", data), 0);
        EXPECT_EQ(sender.emit("e", data), 0);
    }
    EXPECT_EQ(receiver.got, Lines{}) << "no call calls back";
    EXPECT_EQ(sender.send("receiver", most), 0);
    receiver.wait_for(13);
    Lines expected;
    for (const std::string& data :
         {std::string("a"), std::string(), std::string("b\0c", 3), std::string("size 65537end"),
          std::string("size 65536iii"), std::string("d")}) {
        expected.push_back("sender: " + data);
        expected.push_back("[e] " + data);
    }
    expected.emplace_back("sender: size 16777216!!!");
    EXPECT_EQ(receiver.got, expected);
    EXPECT_EQ(receiver.send("sender", "back"), 0);
    sender.wait_for(1);
    EXPECT_EQ(sender.got, Lines{"receiver: back"});
}

TEST_F(NuvipcContract, DeliversToItselfLater) {
    Endpoint own("own");
    ASSERT_EQ(own.notify("e"), 0);
    EXPECT_EQ(own.send("own", "1"), 0);
    EXPECT_EQ(own.emit("e", "2"), 0);
    EXPECT_EQ(own.got, Lines{});
    own.then = [&] {
        if (own.got.size() == 1) {
            EXPECT_EQ(own.send("own", "3"), 0);
            EXPECT_EQ(own.got.size(), 1U);
        }
    };
    own.wait_for(3);
    EXPECT_EQ(own.got, (Lines{"own: 1", "[e] 2", "own: 3"}));
}

TEST_F(NuvipcContract, EventsReachThoseWhoRegistered) {
    Endpoint sender("sender");
    Endpoint named("named");
    Endpoint all("all");
    Endpoint both("both");
    const Endpoint none("none");
    EXPECT_EQ(sender.emit("a", "0"), 0) << "that there is nobody is no failure";
    ASSERT_EQ(named.notify("a"), 0);
    ASSERT_EQ(all.notify("*"), 0);
    ASSERT_EQ(both.notify("*"), 0);
    ASSERT_EQ(both.notify("a"), 0);
    ASSERT_EQ(sender.notify("a"), 0);
    EXPECT_EQ(sender.emit("a", "1"), 0);
    EXPECT_EQ(sender.emit("b", "2"), 0);
    all.wait_for(2);
    both.wait_for(3);
    named.wait_for(1);
    sender.wait_for(1);
    EXPECT_EQ(named.got, Lines{"[a] 1"});
    EXPECT_EQ(sender.got, Lines{"[a] 1"});
    EXPECT_EQ(all.got, (Lines{"[a] 1", "[b] 2"}));
    EXPECT_EQ(both.got, (Lines{"[a] 1", "[a] 1", "[b] 2"}));
    EXPECT_EQ(none.got, Lines{});

    // One that is queued is not delivered once its notifier is gone.
    EXPECT_EQ(sender.emit("a", "3"), 0);
    ASSERT_EQ(nuvipc_event_unregister_notifier(named.ipc, "a"), 0);
    EXPECT_EQ(sender.emit("a", "4"), 0);
    all.wait_for(4);
    both.wait_for(7);
    EXPECT_EQ(named.got.size(), 1U);
}

TEST_F(NuvipcContract, HandlersMayDestroyTheirEndpoint) {
    for (const bool by_event : {false, true}) {
        for (const bool large : {false, true}) {
            Endpoint sender("sender");
            Endpoint receiver("receiver");
            ASSERT_EQ(receiver.notify("e"), 0);
            ASSERT_EQ(receiver.notify("*"), 0);
            for (Endpoint* const endpoint : {&receiver, &sender}) {
                endpoint->then = [endpoint] {
                    nuvipc_destroy(endpoint->ipc);
                    endpoint->ipc = nullptr;
                };
                const std::string data(large ? LARGE : 1, 'x');
                for (int i = 0; i < 3; ++i) {
                    const char* const to = endpoint == &sender ? "sender" : "receiver";
                    ASSERT_EQ(by_event && endpoint != &sender ? sender.emit("e", data)
                                                              : sender.send(to, data),
                              0);
                }
                endpoint->wait_for(1);
                EXPECT_EQ(endpoint->got.size(), 1U);
                EXPECT_EQ(endpoint->ipc, nullptr);
            }
        }
    }
}

TEST_F(NuvipcContract, OwnersMayChange) {
    const Endpoint sender("sender");
    for (int life = 0; life < 3; ++life) {
        Endpoint receiver("receiver");
        EXPECT_EQ(sender.send("receiver", "hello"), 0);
        EXPECT_EQ(sender.emit("e", "nobody has registered yet"), 0);
        ASSERT_EQ(receiver.notify("e"), 0);
        EXPECT_EQ(sender.emit("e", "1"), 0);
        receiver.wait_for(2);
        EXPECT_EQ(receiver.got, (Lines{"sender: hello", "[e] 1"})) << life;
        EXPECT_EQ(sender.send("receiver", "unread"), 0);
    }
    EXPECT_EQ(sender.send("receiver", "x"), -ENOENT);
    EXPECT_EQ(sender.emit("e", "x"), 0);
}

TEST_F(NuvipcContract, RefusesMoreThanAReceiverTakes) {
    struct {
        const char* name;
        std::string data;
    } const rows[] = {
        {"small", "x"}, {"inline", std::string(65536, 'x')}, {"large", std::string(4U << 20, 'x')}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Endpoint sender("sender");
        Endpoint receiver("receiver");
        Endpoint other("other");
        ASSERT_EQ(receiver.notify("e"), 0);
        std::size_t sent = 0;
        int result = 0;
        while ((result = sender.send("receiver", row.data)) >= 0 && sent < 100'000) {
            ++sent;
        }
        EXPECT_EQ(result, -EAGAIN);
        EXPECT_GE(sent, 2U);
        ASSERT_EQ(other.notify("e"), 0);
        EXPECT_EQ(sender.emit("e", row.data), -EAGAIN) << "one of two is full";
        other.wait_for(1);
        receiver.wait_for(sent);
        // Confirmations come later than what they confirm.
        pass_until([&] { return sender.send("receiver", row.data) >= 0; });
        receiver.wait_for(sent + 1);
        EXPECT_EQ(receiver.got.size(), sent + 1);
    }
}

TEST_F(NuvipcContract, ListsEndpointsByName) {
    const Endpoint b("b");
    const Endpoint a("a");
    Lines names;
    const auto each = [](const nuvipc_endpoint* endpoint, void* ctx) {
        static_cast<Lines*>(ctx)->emplace_back(endpoint->name);
        EXPECT_NE(endpoint->alive, 0);
        EXPECT_GT(endpoint->pid, 0);
        EXPECT_EQ(endpoint->mode & 07U, 0U);
        return endpoint->name == std::string("b") ? 7 : 0;
    };
    EXPECT_EQ(nuvipc_list(each, &names), 7);
    EXPECT_EQ(names, (Lines{"a", "b"}));
}

TEST_F(NuvipcContract, DaemonManagerHasOneEndpoint) {
    EXPECT_EQ(daemonmng_get_nuvipc(), nullptr);
    EXPECT_LT(daemonmng_init("not/a/name"), 0);
    EXPECT_EQ(daemonmng_get_nuvipc(), nullptr);
    ASSERT_EQ(daemonmng_init("manager"), 0);
    EXPECT_EQ(daemonmng_init("manager"), -EEXIST);
    Endpoint client("client");
    EXPECT_EQ(nuvipc_msg_send(daemonmng_get_nuvipc(), "client", "x", 1), 0);
    client.wait_for(1);
    EXPECT_EQ(client.got, Lines{"manager: x"});
    daemonmng_exit();
    daemonmng_exit();
    EXPECT_EQ(daemonmng_get_nuvipc(), nullptr);
    EXPECT_EQ(client.send("manager", "x"), -ENOENT);
}

}  // namespace
