// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clogger_proxy.hpp"

#include "nuv/logging.hpp"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv::logging {
namespace {

using Calls = std::vector<std::string>;
using Record = platform::FakeLog::Record;

void take_line(void* /*ctx*/, const char* /*line*/) {}
void take_record(void* /*ctx*/, const clogger_msg_info* /*info*/, const char* /*line*/) {}
int pass(void* /*ctx*/, const clogger_msg_info* /*info*/) { return 1; }
int write_time(char* /*buf*/, std::size_t /*size*/) { return 0; }

class CloggerProxyTest : public testing::Test {
protected:
    platform::FakePlatform platform;
    const CloggerProxy proxy{"", false, false};
};

int context = 0;
const clogger_backup_style STYLE{.files = 3, .rotate_on_open = 1};

/// Each configuration call: the platform's function, its arguments behind the logger, and ours. The
/// first eight throw when refused.
const struct {
    std::string function, arguments;
    void (*call)(const CloggerProxy&);
} CONFIGURATION[] = {
    {"clogger_enable_stderr", ", 3, 5", [](auto& p) { p.config_enable_stderr(3, 5); }},
    {"clogger_enable_stdout", ", 3, 5", [](auto& p) { p.config_enable_stdout(3, 5); }},
    {"clogger_enable_syslog", ", 3, 65535", [](auto& p) { p.config_enable_syslog(3, 0xFFFF); }},
    {"clogger_add_shringbuf", R"(, "ring", 4096, 3, 5)",
     [](auto& p) { p.config_add_shringbuf("ring", 4096, 3, 5); }},
    {"clogger_add_file", R"(, "/log", 2147483648, &{3, 1}, 3, 5)",
     [](auto& p) { p.config_add_file("/log", 1U << 31, &STYLE, 3, 5); }},
    {"clogger_add_function", ", *, NULL, 1, 3, 5",
     [](auto& p) { p.config_add_function(take_line, nullptr, true, 3, 5); }},
    {"clogger_add_ext_function", ", *, *, 0, 3, 5",
     [](auto& p) { p.config_add_ext_function(take_record, &context, false, 3, 5); }},
    {"clogger_add_msg_filter", ", *, *", [](auto& p) { p.config_add_msg_filter(pass, &context); }},
    {"clogger_disable_stderr", "", [](auto& p) { p.config_disable_stderr(); }},
    {"clogger_disable_stdout", "", [](auto& p) { p.config_disable_stdout(); }},
    {"clogger_disable_syslog", "", [](auto& p) { p.config_disable_syslog(); }},
    {"clogger_rm_shringbuf", R"(, "ring")", [](auto& p) { p.config_rm_shringbuf("ring"); }},
    {"clogger_rm_file", R"(, "/log")", [](auto& p) { p.config_rm_file("/log"); }},
    {"clogger_rm_function", ", *, NULL", [](auto& p) { p.config_rm_function(take_line, nullptr); }},
    {"clogger_rm_ext_function", ", *, *",
     [](auto& p) { p.config_rm_ext_function(take_record, &context); }},
    {"clogger_rm_msg_filter", ", *, *", [](auto& p) { p.config_rm_msg_filter(pass, &context); }},
    {"clogger_set_snprintf_time_func", ", *",
     [](auto& p) { p.config_set_snprintf_time_func(write_time); }},
    {"clogger_set_default_logger", "", [](auto& p) { p.config_set_default(); }},
};

TEST_F(CloggerProxyTest, ConfigurationReachesThePlatformUnchangedAndARefusedOutputThrows) {
    Calls seen;
    for (const auto& row : CONFIGURATION) {
        platform.log().fail_next(row.function, 1);
        EXPECT_EQ(test::message_of<std::runtime_error>([&] { row.call(proxy); }),
                  &row - CONFIGURATION < 8 ? row.function + "() failed!" : "");
        EXPECT_NO_THROW(row.call(proxy)) << row.function;
        seen.insert(seen.end(), 2, row.function + "(\"default\"" + row.arguments + ')');
    }
    EXPECT_EQ(platform.journal(), seen);
    EXPECT_EQ(platform.log().leftovers(), Calls{});
}

TEST_F(CloggerProxyTest, WithoutALoggerNothingHappens) {
    platform.log().fail_next("clogger_get_default_logger", 0, 100);
    for (const auto& row : CONFIGURATION) {
        EXPECT_NO_THROW(row.call(proxy)) << row.function;
    }
    CloggerProxy none("", true, true);
    none.set_chunking(5);
    EXPECT_EQ(none.get_chunking(), 0U);
    none.clogger_instance_show(nullptr, nullptr);
    EXPECT_EQ(platform.journal(), Calls{});
}

TEST_F(CloggerProxyTest, NamedLoggerIsMadeWhenMissing) {
    const CloggerProxy first("new", true, true);
    const CloggerProxy second("new", false, false);
    EXPECT_EQ(platform.journal(),
              (Calls{R"(clogger_alloc("new"))", R"(clogger_set_default_logger("new"))",
                     R"(clogmod_get_or_alloc_main("new", "new"))"}));
    EXPECT_EQ(first.get_clogger(), second.get_clogger());
    EXPECT_EQ(proxy.get_clogger(), second.get_clogger());

    platform.log().fail_next("clogger_alloc", 0, 3);
    EXPECT_EQ(CloggerProxy("refused", true, true).get_clogger(), nullptr);
}

TEST_F(CloggerProxyTest, OutputsLeftBehindAreReported) {
    proxy.config_add_file("/log", 0, nullptr, 1, 0);
    const auto left = platform.log().leftovers();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].find(R"("default": clogger_add_file "/log")"), 0U);
    proxy.config_rm_file("/log");
    EXPECT_EQ(platform.log().leftovers(), Calls{});
}

TEST_F(CloggerProxyTest, ChunkSizeBelongsToTheNameThatThePlatformReports) {
    CloggerProxy unnamed("", false, false);
    unnamed.set_chunking(7);
    EXPECT_EQ(get_default_clogger_chunking("default"), 7U);
    EXPECT_EQ(get_default_clogger_chunking(""), 0U);
    EXPECT_EQ(unnamed.get_chunking(), 7U);
    EXPECT_EQ(CloggerProxy("other", false, false).get_chunking(), 0U);
    unnamed.set_chunking(0);
}

TEST_F(CloggerProxyTest, StreamsReachTheFunctionOfTheirLevel) {
    const CloggerProxy named("named", false, false);
    named.get_ostream(0, "src/a", "run", 7, 0) << "dropped";
    EXPECT_EQ(platform.log().texts(), Calls{}) << "nothing has made the logger";
    const ClogmodProxy module("m");
    named.get_clogger();
    for (int level = -1; level < 8; ++level) {
        named.get_ostream(level, "src/a", "run", 7, -9) << "text";
        module.get_ostream(level, "src/a", nullptr, 7) << "text";
        std::vector<Record> records;
        if (level >= 0 && level <= 3) {
            records.push_back({level, "named", "", "src/a", "run", 7, level == 3 ? -9 : 0, "text"});
        }
        if (level >= 0 && level <= 4) {
            records.push_back({level, "default", "m", "src/a", "", 7, 0, "text"});
        }
        EXPECT_EQ(platform.log().records(), records) << level;
        platform.log().clear_records();
    }
    named.get_ostream(0, nullptr, nullptr, 7, 0) << "text";
    EXPECT_EQ(platform.log().records(),
              (std::vector{Record{0, "named", "", "", "", 7, 0, "text"}}));
}

TEST_F(CloggerProxyTest, UnnamedStreamAsksForTheDefaultLoggerByNull) {
    platform.log().fail_next("clogger_get_default_logger", 0, 100);  // not the stream's way
    proxy.get_ostream(0, "f", "g", 1, 0) << "a";
    EXPECT_EQ(platform.log().texts(), Calls{"a"});
    platform.log().fail_next("clogger_get", 0, 2);  // chunk size and record
    proxy.get_ostream(0, "f", "g", 1, 0) << "dropped";
    EXPECT_EQ(platform.log().texts(), Calls{"a"});
}

TEST(ClogmodProxy, StreamWithoutAModuleDropsItsRecord) {
    platform::FakePlatform platform;
    platform.log().fail_next("clogmod_get_or_alloc", 0, 2);
    ClogmodProxy("m").get_ostream(0, "src/a", "run", 7) << "dropped";
    EXPECT_TRUE(platform.log().records().empty());
}

TEST(ClogmodProxy, LevelIsThePlatforms) {
    platform::FakePlatform platform;
    ClogmodProxy proxy("m");
    proxy.set_loglevel(4);
    EXPECT_EQ(proxy.get_loglevel(), 4);
    EXPECT_EQ(clogmod_get_loglevel(proxy.get_clogmod()), 4);
    EXPECT_EQ(platform.journal(), Calls{R"(clogmod_set_loglevel("m", 4))"});
}

}  // namespace
}  // namespace nuv::logging
