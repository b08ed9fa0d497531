// SPDX-License-Identifier: Apache-2.0
#include "internal/log_module.hpp"

#include "nuv/logging/chunk_io_manipulator.hpp"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/foreign_locale.hpp"
#include "tests/support/test.hpp"

namespace nuv::logging {
namespace {

using Texts = std::vector<std::string>;

constinit impl::LogModule module{"log_module_test"};

struct Place {
    static constexpr int LINE = __LINE__ + 1;
    ~Place() { NUV_LOG(module, warn) << "text"; }
};

TEST(LogModule, RecordNamesModuleLevelFileFunctionAndLine) {
    platform::FakePlatform platform;
    { const Place place; }
    EXPECT_EQ(platform.log().records(),
              (std::vector<platform::FakeLog::Record>{{1, "default", "log_module_test",
                                                       "tests/unit/log_module_test", "~Place",
                                                       Place::LINE, 0, "text"}}));
}

TEST(LogModule, MaskedRecordDoesNotEvenLookAtItsOperands) {
    platform::FakePlatform platform;
    int evaluated = 0;
    // NOLINTBEGIN(readability-braces-around-statements)
    if (evaluated == 0)
        NUV_LOG(module, debug) << ++evaluated;
    else
        ADD_FAILURE() << "the macro took the else";
    // NOLINTEND(readability-braces-around-statements)
    EXPECT_EQ(evaluated, 0);
    clogmod_set_loglevel(module.get(), CLOGGER_DEBUG);
    NUV_LOG(module, debug) << ++evaluated;
    NUV_LOG(module, trace) << ++evaluated;
    EXPECT_EQ(platform.log().texts(), Texts{"1"});
}

TEST(LogModule, WaitsForThePlatformToHaveTheModule) {
    static constinit impl::LogModule late{"late"};
    { NUV_LOG(late, error) << "no platform"; }
    platform::FakePlatform platform;
    platform.log().fail_next("clogmod_get_or_alloc", 0);
    NUV_LOG(late, error) << "refused";
    NUV_LOG(late, error) << "logged";
    EXPECT_EQ(platform.log().texts(), Texts{"logged"});
}

TEST(LogModule, LineReadsLikeAStream) {
    platform::FakePlatform platform;
    const auto write = [](auto& os) {
        const std::string text = "string";
        os << "a" << text << std::string_view("view") << text.c_str() << 'c' << true << -1 << 0xFFU
           << std::numeric_limits<std::int64_t>::min() << std::numeric_limits<std::uint64_t>::max()
           << std::uint16_t{65535} << ' ' << std::uint8_t{'8'} << std::int8_t{'7'} << 1.5 << "then"
           << false << std::hex << 255 << std::dec << std::setw(4) << 1 << std::quoted("a\"b") << 2;
    };
    std::ostringstream expected;
    write(expected);
    ASSERT_TRUE(module.enabled(impl::LogModule::error));
    {
        const test::ForeignLocale foreign;
        impl::LogLine line(module, impl::LogModule::error, "f", "g", 1);
        write(line);
    }
    EXPECT_EQ(platform.log().texts(), Texts{expected.str()});
}

TEST(LogModule, RecordsAreCutAtTheDefaultChunkSize) {
    platform::FakePlatform platform;
    set_default_clogger_chunking("default", 2);
    NUV_LOG(module, error) << "a b c\n";
    set_default_clogger_chunking("default", 0);
    EXPECT_EQ(platform.log().texts(), (Texts{"a", "\nb", "\nc"}));
}

}  // namespace
}  // namespace nuv::logging
