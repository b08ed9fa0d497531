// SPDX-License-Identifier: Apache-2.0
#include "nuv/signals.hpp"

#include "tests/support/test.hpp"

namespace nuv::signals {
namespace {

static_assert(!std::is_copy_constructible_v<ScopedConnection>);
static_assert(!std::is_copy_assignable_v<ScopedConnection>);

class SignalTest : public testing::Test {
protected:
    std::unique_ptr<Signal<int>> signal = std::make_unique<Signal<int>>();
    std::string calls;
    std::function<void()> in_a = [] {};

    Connection add(char letter) {
        return signal->connect([this, letter](int value) {
            calls += letter + std::to_string(value);
            if (letter == 'a') {
                const auto copy = in_a;  // it may be replaced meanwhile
                copy();
            }
        });
    }
    // What one emission calls.
    std::string emit(int value) {
        calls.clear();
        signal->emit(value);
        return calls;
    }
};

TEST_F(SignalTest, SlotsAreCalledInOrderUnlessBlockedOrDisconnected) {
    Connection a = add('a');
    Connection b = add('b');
    { const Connection dropped = add('c'); }
    EXPECT_EQ(emit(1), "a1b1c1");
    a.block(true);
    EXPECT_TRUE(a.is_blocked() && a.is_connected());
    EXPECT_EQ(emit(2), "b2c2");
    a.block(false);
    b.disconnect();
    EXPECT_FALSE(b.is_connected());
    EXPECT_EQ(emit(3), "a3c3");
    signal->block(true);
    EXPECT_EQ(emit(4), "");
    signal->block(false);
    signal.reset();
    for (Connection* connection : {&a, &b}) {
        EXPECT_FALSE(connection->is_connected() || connection->is_blocked());
        connection->block(true);
        connection->disconnect();
    }
}

TEST_F(SignalTest, AnEmissionMayBeInterferedWith) {
    Connection a = add('a');
    Connection b = add('b');
    Connection c = add('c');
    in_a = [&] { add('d'); };
    EXPECT_EQ(emit(1), "a1b1c1") << "connected during the emission";
    in_a = [&] { b.block(true); };
    EXPECT_EQ(emit(2), "a2c2d2");
    in_a = [&] { a.disconnect(), c.disconnect(), b.block(false); };
    EXPECT_EQ(emit(3), "a3b3d3");
    EXPECT_EQ(emit(4), "b4d4");

    a = add('a');
    c = add('c');
    in_a = [&] {
        in_a = [] {};
        signal->emit(6);
    };
    EXPECT_EQ(emit(5), "b5d5a5b6d6a6c6c5");
    in_a = [] { throw std::runtime_error("x"); };
    EXPECT_THROW(emit(7), std::runtime_error);
    EXPECT_EQ(calls, "b7d7a7");
    in_a = [&] { signal.reset(); };
    EXPECT_EQ(emit(8), "b8d8a8");
    EXPECT_FALSE(a.is_connected() || c.is_connected());
}

TEST_F(SignalTest, ScopedConnectionsDisconnect) {
    {
        const ScopedConnection scoped(add('a'));
        EXPECT_EQ(emit(1), "a1");
    }
    EXPECT_EQ(emit(2), "");
    ScopedConnection one(add('b'));
    ScopedConnection two(add('c'));
    one = std::move(two);
    EXPECT_EQ(emit(3), "c3");
    EXPECT_FALSE(two.is_connected());  // NOLINT(bugprone-use-after-move): it holds the old slot
    one = add('d');
    EXPECT_EQ(emit(4), "d4");
    ScopedConnection& self = one;
    one = std::move(self);
    ScopedConnection three(std::move(one));
    EXPECT_EQ(emit(5), "d5");
}

TEST_F(SignalTest, ConnectionsCompareBySlot) {
    const Connection a = add('a');
    const Connection b = add('b');
    const Connection again = a;
    EXPECT_TRUE(a == again && a != b && a != Connection());
    std::set<Connection> kept{a, b, again};
    EXPECT_EQ(kept.size(), 2U);
    signal.reset();
    EXPECT_TRUE(a == b && a == Connection()) << "gone";
    EXPECT_TRUE(a < b || b < a) << "and yet ordered";
    EXPECT_EQ(kept.erase(a), 1U);
}

}  // namespace
}  // namespace nuv::signals
