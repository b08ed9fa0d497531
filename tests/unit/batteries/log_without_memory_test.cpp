// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <new>

#include "internal/log_module.hpp"
#include "nuv/logging.hpp"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/test.hpp"

namespace {
thread_local int allocations_left = -1;  // below 0: any number
}

// Out of line, or g++ takes the pair for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    void* const memory = allocations_left == 0 ? nullptr : std::malloc(size);
    allocations_left -= allocations_left > 0 ? 1 : 0;
    return memory;
}
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
// NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
// NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace nuv::logging {
namespace {

constinit impl::LogModule module{"a module whose name needs memory"};

TEST(LogWithoutMemory, StatementsDropTheWholeRecordAndThrowNothing) {
    platform::FakePlatform platform;
    static const std::string name = "a logger whose name needs memory";
    static const std::string text(300, 'x');
    static const CloggerProxy logger(name, true, false);
    static const ClogmodProxy proxy(name);
    const std::pair<std::string, void (*)()> rows[] = {
        {text + "1", [] { NUV_LOG(module, error) << text << 1; }},
        {text + "1.5" + text, [] { NUV_LOG(module, error) << text << 1.5 << text; }},
        {text + "1.5",
         [] { logger.get_ostream(3, text.c_str(), text.c_str(), 1, 2) << text << 1.5; }},
        {text + text, [] { proxy.get_ostream(0, text.c_str(), nullptr, 1) << text << text; }},
    };
    for (const auto& [record, log] : rows) {
        log();  // looks up the handle
        platform.log().clear_records();
        int enough = -1;
        do {
            allocations_left = ++enough;
            EXPECT_NO_THROW(log()) << enough;
            allocations_left = -1;
            const auto texts = platform.log().texts();
            ASSERT_TRUE(texts.empty() || texts == std::vector{record}) << enough;
        } while (platform.log().records().empty() && enough < 100);
        EXPECT_GT(enough, 3) << record;
    }
}

}  // namespace
}  // namespace nuv::logging
