// SPDX-License-Identifier: Apache-2.0
#include "nuv/state_machine.hpp"

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv::state_machine {
namespace {

// What happened, in order.
std::string journal;

struct Step : Event {
    explicit Step(std::function<void(StateMachine&)> wanted) : run(std::move(wanted)) {}
    std::function<void(StateMachine&)> run;
};

class Named : public IState {
public:
    Named(
        StateMachine& machine, const StateMachine::CreateToken& token, char letter,
        std::function<void(StateMachine&)> entry = [](StateMachine&) {})
        : IState(machine, token), letter_(letter), entry_(std::move(entry)) {
        if (letter == '!') {
            throw std::invalid_argument("refused");
        }
        note("new");
    }
    ~Named() override { note("gone"); }
    std::string get_name() const override { return {letter_}; }
    ID get_id() const override { return ID(get_name()); }
    void on_entry() override {
        note("entry");
        entry_(get_state_machine());
    }
    void on_exit() override { note("exit"); }
    void on_event(const Event& event) override {
        note("event");
        dynamic_cast<const Step&>(event).run(get_state_machine());
        note("end");
    }

private:
    void note(const char* what) const {
        journal += std::string(journal.empty() ? "" : " ") + letter_ + "." + what +
                   (is_entered() ? "" : "-");
    }

    char letter_;
    std::function<void(StateMachine&)> entry_;
};

std::string taken() { return std::exchange(journal, ""); }

TEST(StateMachine, LeavesTheOldStateCreatesAndEntersTheNewOne) {
    StateMachine machine;
    const IState& a = machine.transition_to<Named>('a');
    EXPECT_EQ(&a, machine.get_current_state());
    EXPECT_EQ(taken(), "a.new- a.entry");
    machine.transition_to<Named>('b');
    EXPECT_EQ(taken(), "a.exit b.new- b.entry a.gone-");
    machine.on_event(Step([](StateMachine& own) {
        own.transition_to<Named>('c');
        own.transition_to<Named>('d');
        own.on_event(Step([](StateMachine&) {}));
    }));
    EXPECT_EQ(taken(),
              "b.event b.exit c.new- c.entry c.exit d.new- d.entry d.event d.end b.end- b.gone- "
              "c.gone-");
    machine.on_event(Step([](StateMachine& own) {
        own.deinit();
        EXPECT_EQ(own.get_current_state(), nullptr);
    }));
    EXPECT_EQ(taken(), "d.event d.exit d.end- d.gone-");
    machine.deinit();
    EXPECT_EQ(taken(), "");
    { StateMachine().transition_to<Named>('e'); }
    EXPECT_EQ(taken(), "e.new- e.entry e.exit e.gone-");
}

TEST(StateMachine, RefusesTransitionsWithinOne) {
    StateMachine machine;
    EXPECT_THROW(
        machine.transition_to<Named>('a', [](StateMachine& own) { own.transition_to<Named>('b'); }),
        std::logic_error);
    EXPECT_EQ(machine.get_current_state()->get_name(), "a");
    EXPECT_THROW(machine.transition_to<Named>('!'), std::invalid_argument);
    EXPECT_EQ(machine.get_current_state(), nullptr);
    taken();
}

TEST(StateMachine, AnEventWithoutStateIsLoggedAndThrown) {
    platform::FakePlatform fake;
    StateMachine machine;
    const std::string text = "Dispatching Event on uninitialised State Machine!";
    EXPECT_EQ(test::message_of<std::runtime_error>([&] { machine.on_event(Event()); }), text);
    EXPECT_EQ(fake.log().records(),
              (std::vector<platform::FakeLog::Record>{{0, "default", "state_machine",
                                                       "src/shared/state_machine/state_machine",
                                                       "on_event", 40, 0, text}}));
}

}  // namespace
}  // namespace nuv::state_machine
