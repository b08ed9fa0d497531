// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "nuv_platform/clog.h"
#include "tests/support/test.hpp"

namespace {

using Lines = std::vector<std::string>;

/// A logger and a bound module of each test's own, and a callback that keeps lines.
class ClogContract : public testing::Test {
public:
    ClogContract() { clogger_add_function(logger, keep, &lines, 0, 31, CLOGGER_FIELD_NONE); }
    ~ClogContract() override { clogger_rm_function(logger, keep, &lines); }

protected:
    static void keep(void* ctx, const char* line) { static_cast<Lines*>(ctx)->emplace_back(line); }

    Lines take() { return std::exchange(lines, {}); }

    /// Writes one record of each level, the level's letter being the text; returns those that were kept.
    std::string log_all() {
        clogmod__err(module, "f", "g", 1, "E");
        clogmod__warn(module, "f", "g", 1, "W");
        clogmod__info(module, "f", "g", 1, "I");
        clogmod__debug(module, "f", "g", 1, "D");
        clogmod__trace(module, "f", "g", 1, "T");
        const Lines kept = take();
        return std::accumulate(kept.begin(), kept.end(), std::string());
    }

    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    const std::string module_name = name + ".module";
    clogger* const logger = clogger_alloc(name.c_str());
    clogmod* const module = clogmod_get_or_alloc_main(logger, module_name.c_str());
    Lines lines;
};

std::string selection(auto wanted) {
    std::string selected;
    for (int level = 0; level < 5; ++level) {
        selected += wanted(level) ? std::string(1, "EWIDT"[level]) : "";
    }
    return selected;
}

TEST_F(ClogContract, HandlesAreFoundByName) {
    EXPECT_EQ(clogger_get(name.c_str()), logger);
    EXPECT_EQ(clogger_alloc(name.c_str()), logger);
    EXPECT_EQ(clogger_get_name(logger), name);
    EXPECT_EQ(clogmod_get_or_alloc(module_name.c_str()), module);
    EXPECT_EQ(clogmod_get_clogger(module), logger);
    EXPECT_EQ(clogger_get("never made"), nullptr);
}

TEST_F(ClogContract, ModulesFollowTheDefaultLoggerUntilTheyAreBound) {
    clogger* const before = clogger_get_default_logger();
    EXPECT_STREQ(clogger_get_name(before), "default");
    clogmod* const other = clogmod_get_or_alloc((name + ".other").c_str());
    EXPECT_EQ(clogmod_get_clogger(other), before);

    EXPECT_EQ(clogger_set_default_logger(logger), 0);
    EXPECT_EQ(clogger_get(nullptr), logger);
    EXPECT_EQ(clogger_get_default_logger(), logger);
    clogmod__err(other, "f", "g", 1, "follows");
    EXPECT_EQ(take(), Lines{"follows"});

    EXPECT_EQ(clogger_set_default_logger(before), 0);
    EXPECT_EQ(clogmod_get_or_alloc_main(logger, (name + ".other").c_str()), other);
    EXPECT_EQ(clogmod_get_clogger(other), logger);
}

TEST_F(ClogContract, ModuleStartsAtInfoAndItsLevelLetsMoreSevereRecordsPass) {
    EXPECT_EQ(clogmod_get_loglevel(module), CLOGGER_INFO);
    for (const int limit : {-7, -1, 0, 1, 2, 3, 4, 5}) {
        clogmod_set_loglevel(module, limit);
        EXPECT_EQ(clogmod_get_loglevel(module), limit);
        EXPECT_EQ(log_all(), selection([=](int level) { return level <= limit; })) << limit;
    }
}

TEST_F(ClogContract, MaskPicksTheLevelsOfAnOutput) {
    clogmod_set_loglevel(module, CLOGGER_TRACE);
    clogger_rm_function(logger, keep, &lines);
    for (unsigned mask = 0; mask < 64; ++mask) {  // one bit more than there are levels
        ASSERT_EQ(clogger_add_function(logger, keep, &lines, 0, static_cast<uint16_t>(mask), 0), 0);
        EXPECT_EQ(log_all(), selection([=](int level) { return (mask >> level & 1) != 0; }))
            << mask;
        ASSERT_EQ(clogger_rm_function(logger, keep, &lines), 0);
    }
}

TEST_F(ClogContract, RecordsStraightToALoggerGoByItsMainModule) {
    const auto log = [](clogger* to) {
        clogger__err(to, "f", "g", 1, "E");
        clogger__warn(to, "f", "g", 1, "W");
        clogger__info(to, "f", "g", 1, "I");
        clogger__debug(to, "f", "g", 1, 0, "D");
    };
    log(logger);
    EXPECT_EQ(take(), (Lines{"E", "W", "I"}));
    clogmod_set_loglevel(module, CLOGGER_DEBUG);
    log(logger);
    EXPECT_EQ(take(), (Lines{"E", "W", "I", "D"}));

    clogger* const bare = clogger_alloc((name + ".bare").c_str());
    ASSERT_EQ(clogger_add_function(bare, keep, &lines, 0, 31, 0), 0);
    log(bare);
    EXPECT_EQ(take(), (Lines{"E", "W", "I"}));
    EXPECT_EQ(clogger_rm_function(bare, keep, &lines), 0);
}

TEST_F(ClogContract, FieldsPrecedeTheText) {
    ASSERT_EQ(clogger_set_snprintf_time_func(
                  logger, [](char* buf, size_t size) { return std::snprintf(buf, size, "noon"); }),
              0);
    clogger_rm_function(logger, keep, &lines);
    const struct {
        uint16_t fields;
        int newline;
        Lines lines;  // with all in the source, without a function, straight to the logger
    } rows[] = {
        {0, 0, {"text", "text", "text"}},
        {CLOGGER_FIELD_NONE, 1, {"text\n", "text\n", "text\n"}},
        {CLOGGER_FIELD_TIME, 0, {"noon: text", "noon: text", "noon: text"}},
        {CLOGGER_FIELD_LEVEL, 0, {"WARN: text", "WARN: text", "ERROR: text"}},
        {CLOGGER_FIELD_MODULE,
         0,
         {module_name + ": text", module_name + ": text", name + ": text"}},
        {CLOGGER_FIELD_SOURCE, 0, {"src/a:7 run: text", "src/a:7: text", "text"}},
        {15,
         1,
         {"noon WARN " + module_name + " src/a:7 run: text\n",
          "noon WARN " + module_name + " src/a:7: text\n", "noon ERROR " + name + ": text\n"}},
    };
    for (const auto& row : rows) {
        ASSERT_EQ(clogger_add_function(logger, keep, &lines, row.newline, 31, row.fields), 0);
        clogmod__warn(module, "src/a", "run", 7, "text");
        clogmod__warn(module, "src/a", nullptr, 7, "text");
        clogger__err(logger, nullptr, nullptr, 7, "text");
        EXPECT_EQ(take(), row.lines) << row.fields;
        ASSERT_EQ(clogger_rm_function(logger, keep, &lines), 0);
    }
}

TEST_F(ClogContract, TextIsFormattedLikePrintf) {
    const std::string longer(5000, 'x');
    clogmod__err(module, "f", "g", 1, "%d of %s", 3, "four");
    clogmod__err(module, "f", "g", 1, "%s", "%n%s");
    clogmod__err(module, "f", "g", 1, "%s", longer.c_str());
    clogmod__err(module, "f", "g", 1, "<%s>", longer.c_str());
    const char* const none = std::getenv("NO SUCH VARIABLE");  // the compiler knows a literal NULL
    clogmod__err(module, "f", "g", 1, "%s", none);
    clogmod__err(module, "f", "g", 1, "<%s>", none);
    EXPECT_EQ(take(),
              (Lines{"3 of four", "%n%s", longer, "<" + longer + ">", "(null)", "<(null)>"}));
}

TEST_F(ClogContract, ExtendedFunctionSeesTheWholeRecord) {
    const auto describe = [](void* ctx, const clogger_msg_info* info, const char* line) {
        std::string text = info->logger;
        for (const char* part : {info->module, info->file, info->function, info->text, line}) {
            text.append("|").append(part);
        }
        for (const int number : {info->line, info->level, info->debug_arg}) {
            text += '|' + std::to_string(number);
        }
        static_cast<Lines*>(ctx)->push_back(text);
    };
    Lines records;
    ASSERT_EQ(clogger_add_ext_function(logger, describe, &records, 1, 31, CLOGGER_FIELD_LEVEL), 0);
    clogmod_set_loglevel(module, CLOGGER_TRACE);
    clogmod__trace(module, "src/a", "run", 7, "t");
    clogger__debug(logger, nullptr, nullptr, -1, 42, "d");
    EXPECT_EQ(clogger_rm_ext_function(logger, describe, &records), 0);
    clogmod__err(module, "src/a", "run", 7, "after removal");
    EXPECT_EQ(records, (Lines{name + "|" + name + ".module|src/a|run|t|TRACE: t\n|7|4|0",
                              name + "||||d|DEBUG: d\n|-1|3|42"}));
}

TEST_F(ClogContract, EveryFilterMustLetARecordPass) {
    const auto odd = [](void*, const clogger_msg_info* info) { return info->line % 2; };
    const auto small = [](void* ctx, const clogger_msg_info* info) {
        return static_cast<int>(info->line < *static_cast<int*>(ctx));
    };
    int limit = 4;
    const auto log = [&] {
        for (int line = 1; line < 8; ++line) {
            clogmod__info(module, "f", "g", line, "%d", line);
        }
        return take();
    };
    ASSERT_EQ(clogger_add_msg_filter(logger, odd, nullptr), 0);
    EXPECT_EQ(log(), (Lines{"1", "3", "5", "7"}));
    ASSERT_EQ(clogger_add_msg_filter(logger, small, &limit), 0);
    EXPECT_EQ(log(), (Lines{"1", "3"}));
    EXPECT_EQ(clogger_rm_msg_filter(logger, odd, nullptr), 0);
    EXPECT_EQ(log(), (Lines{"1", "2", "3"}));
    EXPECT_EQ(clogger_rm_msg_filter(logger, small, &limit), 0);
}

TEST_F(ClogContract, OutputsAreKnownByTheirKeys) {
    EXPECT_EQ(clogger_add_function(logger, keep, &lines, 1, 1, 0), -EEXIST);
    EXPECT_THAT(
        (std::vector{clogger_rm_function(logger, keep, nullptr),
                     clogger_rm_function(logger, nullptr, nullptr),
                     clogger_rm_ext_function(logger, nullptr, nullptr),
                     clogger_rm_msg_filter(logger, nullptr, nullptr),
                     clogger_rm_file(logger, "/nowhere"), clogger_rm_shringbuf(logger, "nothing")}),
        testing::Each(-ENOENT));
    for (const auto& [enable, disable] :
         {std::pair{&clogger_enable_stderr, &clogger_disable_stderr},
          std::pair{&clogger_enable_stdout, &clogger_disable_stdout},
          std::pair{&clogger_enable_syslog, &clogger_disable_syslog}}) {
        EXPECT_EQ((std::vector{disable(logger), enable(logger, 1, 0), enable(logger, 0, 0),
                               disable(logger), disable(logger)}),
                  (std::vector{-ENOENT, 0, 0, 0, -ENOENT}));
    }
}

TEST_F(ClogContract, ArgumentsOutOfRangeAreRefused) {
    EXPECT_THAT(
        (std::vector{clogger_add_function(logger, nullptr, nullptr, 0, 31, 0),
                     clogger_add_ext_function(logger, nullptr, nullptr, 0, 31, 0),
                     clogger_add_msg_filter(logger, nullptr, nullptr),
                     clogger_add_file(logger, nullptr, 0, nullptr, 31, 0),
                     clogger_add_file(logger, "", 0, nullptr, 31, 0),
                     clogger_add_shringbuf(logger, nullptr, 4096, 31, 0),
                     clogger_add_shringbuf(logger, "a/b", 4096, 31, 0),
                     clogger_add_shringbuf(logger, "ring", 1023, 31, 0),
                     clogger_add_shringbuf(logger, "ring", (1U << 30) + 1, 31, 0),
                     clogger_show(logger, nullptr, nullptr), clogger_set_default_logger(nullptr),
                     clogger_enable_stderr(nullptr, 31, 0), clogger_disable_stderr(nullptr),
                     clogger_set_snprintf_time_func(nullptr, nullptr)}),
        testing::Each(-EINVAL));
    EXPECT_THAT((std::vector{clogmod_get_or_alloc(nullptr), clogmod_get_or_alloc(""),
                             clogmod_get_or_alloc_main(nullptr, "m"),
                             clogmod_get_or_alloc_main(logger, nullptr)}),
                testing::Each(nullptr));
    EXPECT_THAT(
        (std::vector{clogger_alloc(nullptr), clogger_alloc(""), clogmod_get_clogger(nullptr)}),
        testing::Each(nullptr));
    EXPECT_EQ(clogger_get_name(nullptr), nullptr);
    EXPECT_EQ(clogmod_get_loglevel(nullptr), -1);
    clogmod_set_loglevel(nullptr, 4);
    clogger__err(nullptr, "f", "g", 1, "x");
    clogmod__err(nullptr, "f", "g", 1, "x");
}

CLOG_PRINTF(2, 3) int print_to_nothing(void* /*ctx*/, const char* /*fmt*/, ...) { return 0; }

TEST_F(ClogContract, CallbacksCannotLogOrChangeOutputs) {
    const auto nosy = [](void* ctx, const clogger_msg_info* info) {
        clogger* const own = clogger_get(info->logger);
        clogger__err(own, "f", "g", 1, "from the callback");
        *static_cast<Lines*>(ctx) = {std::to_string(clogger_enable_stdout(own, 31, 0)),
                                     std::to_string(clogger_disable_stdout(own)),
                                     std::to_string(clogger_show(own, print_to_nothing, nullptr))};
        return 1;
    };
    Lines results;
    ASSERT_EQ(clogger_add_msg_filter(logger, nosy, &results), 0);
    clogmod__err(module, "f", "g", 1, "x");
    EXPECT_EQ(clogger_rm_msg_filter(logger, nosy, &results), 0);
    EXPECT_EQ(results, Lines(3, std::to_string(-EDEADLK)));
    EXPECT_EQ(take(), Lines{"x"});
}

struct Print {
    std::string text;
    int result;
};

CLOG_PRINTF(2, 3) int print_to_text(void* ctx, const char* fmt, ...) {
    char line[256];
    std::va_list args;
    va_start(args, fmt);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): it is started just above
    std::vsnprintf(line, sizeof line, fmt, args);
    va_end(args);
    auto& print = *static_cast<Print*>(ctx);
    print.text += line;
    return print.result;
}

TEST_F(ClogContract, ShowPrintsOutputsAndModulesUntilThePrinterRefuses) {
    Print all{"", 0};
    EXPECT_EQ(clogger_show(logger, print_to_text, &all), 0);
    for (const auto& part : {name, module_name, std::string("clogger_add_function")}) {
        EXPECT_THAT(all.text, testing::HasSubstr(part));
    }
    Print first{"", -3};
    EXPECT_EQ(clogger_show(logger, print_to_text, &first), -3);
    EXPECT_EQ(first.text, all.text.substr(0, all.text.find('\n') + 1));
}

TEST_F(ClogContract, ThreadsMayLogAtTheSameTime) {
    constexpr int COUNT = 500;
    const auto log = [this](const char* text) {
        for (int i = 0; i < COUNT; ++i) {
            clogmod__info(module, "f", "g", i, "%s", text);
        }
    };
    std::thread other(log, "other");
    log("own");
    other.join();
    const Lines logged = take();
    EXPECT_EQ(std::count(logged.begin(), logged.end(), "own"), COUNT);
    EXPECT_EQ(std::count(logged.begin(), logged.end(), "other"), COUNT);
}

}  // namespace
