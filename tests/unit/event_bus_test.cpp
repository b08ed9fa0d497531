// SPDX-License-Identifier: Apache-2.0
#include "nuv/event_bus.hpp"

#include "nuv/i_event_module.hpp"
#include "tests/support/test.hpp"

namespace nuv {
namespace {

struct Module : IEventModule {
    Module(const EventBus::CreateToken& token, std::string& log, char letter)
        : IEventModule(token), log_(log), letter_(letter) {
        log_ += letter_;
    }
    ~Module() override { log_ += letter_; }
    std::string& log_;
    char letter_;
};
static_assert(!std::is_default_constructible_v<EventBus::CreateToken>);

TEST(EventBus, OwnsModulesByID) {
    EventBus& bus = EventBus::get();
    EXPECT_EQ(&bus, &EventBus::get());
    const ID id("id");
    std::string log;
    Module* const module = bus.add<Module>(id, log, 'a');
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(bus.add<Module>(id, log, 'x'), nullptr);
    EXPECT_EQ(log, "a") << "a refused module is not created";
    EXPECT_EQ(bus.get(id), module);
    EXPECT_EQ(bus.get(ID("other")), nullptr);
    EXPECT_NE(bus.add<Module>(ID("other"), log, 'b'), nullptr);
    EXPECT_TRUE(bus.remove(id));
    EXPECT_FALSE(bus.remove(id));
    EXPECT_TRUE(bus.remove(ID("other")));
    EXPECT_EQ(log, "abab");
}

}  // namespace
}  // namespace nuv
