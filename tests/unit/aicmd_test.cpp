// SPDX-License-Identifier: Apache-2.0
#include "nuv/aicmd.hpp"

#include <cerrno>

#include "nuv_platform/csock.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv {
namespace {

using Lines = std::vector<std::string>;

class AicmdTest : public testing::Test {
protected:
    AicmdTest() { csock_init(); }
    ~AicmdTest() override {
        aicmd.reset();
        csock_exit();
        EXPECT_EQ(fake.leftovers(), Lines{});
    }

    // Prints the first argument and adds one to the context.
    static int echo(aicmd_session* session, int argc, char** argv) {
        if (auto* const count = static_cast<int*>(aicmd_session_ctx(session))) {
            ++*count;
        }
        aicmd_printf(session, "%s\n", argc > 1 ? argv[1] : "");
        return 0;
    }
    std::string run(const std::string& line) { return fake.commands().run("app", line); }

    platform::FakePlatform fake;
    std::unique_ptr<Aicmd> aicmd;
    void listen() {
        aicmd = std::make_unique<Aicmd>(
            std::shared_ptr<nuvipc>(nuvipc_create("app"), &nuvipc_destroy), "app");
    }
};

TEST_F(AicmdTest, AnswersTheBuiltInCommands) {
    listen();
    EXPECT_EQ(run("HELP"),
              "HELP [command]  show help\n"
              "SLABDUMP        show slab allocation\n"
              "SLABSHOW        show slab information\n"
              "QUIT            disconnect\n"
              "OK\n");
    EXPECT_EQ(run("quit"), "OK\n");
    EXPECT_TRUE(run("nothing").starts_with("ERROR "));
}

TEST_F(AicmdTest, ListensOnlyWithAnEndpoint) {
    { const Aicmd none(nullptr, ""); }
    EXPECT_EQ(fake.commands().journal(), Lines{});
    fake.commands().fail_next("aicmd_listen_start", 7);
    EXPECT_EQ(test::message_of<std::runtime_error>([this] { listen(); }),
              "aicmd_listen_start() failed with error code 7");
}

TEST_F(AicmdTest, ModulesAreUniqueByName) {
    aicmd = std::make_unique<Aicmd>(nullptr, "");
    const auto module = aicmd->create_module("m", nullptr);
    EXPECT_EQ(module->get_name(), "m");
    EXPECT_EQ(aicmd->create_module("m", nullptr), nullptr);
    EXPECT_EQ(aicmd->get_module("m"), module);
    EXPECT_EQ(aicmd->get_module("n"), nullptr);
    ASSERT_TRUE(module->start());
    EXPECT_TRUE(aicmd->remove_module("m"));
    EXPECT_FALSE(aicmd->remove_module("m"));
    EXPECT_TRUE(module->started());
    const auto second = aicmd->create_module("m", nullptr);
    EXPECT_TRUE(second->start());
    aicmd.reset();
    EXPECT_FALSE(second->started()) << "the end stops modules that others hold";
}

TEST_F(AicmdTest, AModuleAnswersBetweenStartAndStop) {
    listen();
    int count = 0;
    const auto module = aicmd->create_module("m", &count);
    for (int i = 0; i < 100; ++i) {
        EXPECT_TRUE(module->add_command("C" + std::to_string(i) + " x", "help", echo));
    }
    EXPECT_TRUE(run("C0 a").starts_with("ERROR "));
    for (int round = 1; round < 3; ++round) {
        EXPECT_FALSE(module->stop());
        EXPECT_TRUE(module->start());
        EXPECT_FALSE(module->start());
        EXPECT_FALSE(module->add_command("LATE", "help", echo));
        EXPECT_EQ(run("c0 a"), "a\nOK\n");
        EXPECT_EQ(run("C99 b"), "b\nOK\n");
        EXPECT_EQ(count, 2 * round);
        EXPECT_EQ(run("HELP C99"), "C99 x  help\nOK\n");
        EXPECT_TRUE(run("LATE").starts_with("ERROR "));
        EXPECT_TRUE(module->stop());
    }
    EXPECT_TRUE(run("C0 a").starts_with("ERROR "));
}

TEST_F(AicmdTest, ARefusedModuleIsNotStarted) {
    const struct {
        const char* call;
        void* ctx;
        Lines journal;
    } rows[] = {
        {"aicmd_register_library", this, {R"(aicmd_register_library("m"))"}},
        {"aicmd_module_set_ctx",
         this,
         {R"(aicmd_register_library("m"))", R"(aicmd_module_set_ctx("m", "m", *))",
          R"(aicmd_unregister_library("m"))"}},
    };
    for (const auto& row : rows) {
        const std::size_t before = fake.commands().journal().size();
        AicmdModule module("m", row.ctx);
        fake.commands().fail_next(row.call, -ENOMEM);
        EXPECT_FALSE(module.start() || module.started());
        const auto& journal = fake.commands().journal();
        EXPECT_EQ(Lines(journal.begin() + static_cast<std::ptrdiff_t>(before), journal.end()),
                  row.journal);
    }
    AicmdModule module("m", nullptr);
    ASSERT_TRUE(module.start());
    fake.commands().fail_next("aicmd_unregister_library", -EIO);
    EXPECT_FALSE(module.stop());
    EXPECT_TRUE(module.started());
}

TEST_F(AicmdTest, AModuleThatCannotBeStoppedIsLogged) {
    {
        AicmdModule module("m\"", nullptr);
        fake.commands().fail_next("aicmd_register_library", 0);  // success, and not registered
        ASSERT_TRUE(module.start());
    }
    ASSERT_EQ(fake.log().records().size(), 1U);
    EXPECT_EQ(fake.log().records()[0].text, R"(failed to stop debug command module "m\"")");
    EXPECT_EQ(fake.log().records()[0].level, 0);
}

TEST_F(AicmdTest, AHandlerMayRemoveItsModule) {
    listen();
    aicmd->create_module("m", aicmd.get())
        ->add_command("BYE", "remove", [](aicmd_session* session, int, char** argv) {
            EXPECT_TRUE(static_cast<Aicmd*>(aicmd_session_ctx(session))->remove_module("m"));
            aicmd_printf(session, "%s\n", argv[0]);
            return 0;
        });
    ASSERT_TRUE(aicmd->get_module("m")->start());
    EXPECT_EQ(run("BYE"), "BYE\nOK\n");
    EXPECT_TRUE(run("BYE").starts_with("ERROR "));
}

}  // namespace
}  // namespace nuv
