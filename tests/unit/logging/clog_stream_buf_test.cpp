// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clog_stream_buf.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <ctime>
#include <locale>
#include <thread>

#include "nuv/logging.hpp"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/foreign_locale.hpp"
#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::logging {
namespace {

using Texts = std::vector<std::string>;
using Chunk = ChunkIOManipulator;

static_assert(!std::is_copy_constructible_v<ClogStreamBuf>);
static_assert(std::is_nothrow_move_constructible_v<ClogStreamBuf>);
static_assert(std::is_nothrow_move_assignable_v<ClogStreamBuf>);

class ClogStreamBufTest : public testing::Test {
protected:
    static ClogStreamBuf stream() { return ClogmodProxy("m").get_ostream(0, "f", "g", 1); }

    /// What was logged since the last call.
    Texts logged() {
        auto texts = platform.log().texts();
        platform.log().clear_records();
        return texts;
    }

    platform::FakePlatform platform;
};

TEST_F(ClogStreamBufTest, LongTextIsCutAtNewlinesThenBlanksThenHard) {
    for (const auto& [call, pieces] : test::listed_cases("log_pieces.tsv")) {
        const std::size_t blank = call.find(' ');
        const auto size = static_cast<std::uint32_t>(std::stoul(call.substr(0, blank)));
        stream() << Chunk(size) << call.substr(blank + 1);
        std::string records;
        for (const std::string& record : logged()) {
            records += record + '|';
        }
        EXPECT_EQ(records, pieces + '|') << call;
    }
}

TEST_F(ClogStreamBufTest, NoCharacterIsLostInPieces) {
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        const auto chunk = static_cast<std::uint32_t>(2 + random() % 9);
        std::string text;
        for (auto length = 1 + random() % 40; length != 0; --length) {
            text += "abcd \n"[random() % 6];
        }
        text += '.';
        stream() << Chunk(chunk) << text;
        std::string joined;
        for (const std::string& piece : logged()) {
            ASSERT_LE(piece.size(), chunk) << text;
            joined += piece;
        }
        const auto separates = [](char c) { return c == ' ' || c == '\n'; };
        std::erase_if(joined, separates);
        std::erase_if(text, separates);
        ASSERT_EQ(joined, text) << chunk;
    }
}

TEST_F(ClogStreamBufTest, CuttingTakesTimeInProportionToTheLength) {
    constexpr std::size_t LENGTH = 4'000'000;
    const std::clock_t before = std::clock();
    stream() << Chunk(100) << std::string(LENGTH, 'x');
    EXPECT_LT((std::clock() - before) / CLOCKS_PER_SEC,
              5);  // in proportion to its square: 20 and more
    EXPECT_EQ(logged().size(), (LENGTH - 2) / 99 + 1);
}

TEST_F(ClogStreamBufTest, PendingTextIsLoggedOnceWhateverTheStreamSays) {
    const test::ForeignLocale foreign;  // streams go by the classic one
    const std::pair<void (*)(ClogStreamBuf&), Texts> rows[] = {
        {[](auto& s) { s << "a " << 1000 << ' ' << 1.5; }, {"a 1000 1.5"}},
        {[](auto& s) { s << "a" << std::endl; }, {"a"}},  // nothing is left for the destructor
        {[](auto&) {}, {}},
        {[](auto& s) { s << ""; }, {}},
        {[](auto& s) { s << std::flush; }, {""}},  // asked for, so it is logged, empty as it is
        {[](auto& s) { s << "a" << std::flush << "b" << std::flush << "c"; }, {"a", "b", "c"}},
        {[](auto& s) { s << "%n%s"; }, {"%n%s"}},
        {[](auto& s) { s.seekp(0); }, {}},
        {[](auto& s) { (s << "abc").seekp(0); }, {"abc"}},
        {[](auto& s) { (s << "abc").setstate(std::ios_base::failbit); }, {"abc"}},
        {[](auto& s) {
             s.imbue(std::locale());
             s << 1.5;
         },
         {"1,5"}},
    };
    for (const auto& [use, records] : rows) {
        {
            auto s = stream();
            use(s);
        }
        EXPECT_EQ(logged(), records) << &records - &rows[0].second;
    }
}

TEST_F(ClogStreamBufTest, MovedStreamCarriesTextChunkSizeAndDestination) {
    std::optional<ClogStreamBuf> from(stream());
    *from << Chunk(2) << "a ";
    ClogStreamBuf to(std::move(*from));
    EXPECT_EQ(to.rdbuf(), &to);
    *from << "discarded";
    from.reset();
    to << "b" << std::flush;
    EXPECT_EQ(logged(), (Texts{"a", "\nb"}));

    ClogStreamBuf assigned = stream();
    assigned << "pending";
    to << "c d";
    assigned = std::move(to);
    EXPECT_EQ(logged(), Texts{"pending"});
    assigned << " e" << std::flush;
    EXPECT_EQ(logged(), (Texts{"c", "\nd", "\ne"}));
}

TEST_F(ClogStreamBufTest, SwapExchangesTextAndDestination) {
    ClogStreamBuf without;
    {
        auto with = stream();
        with << "text";
        without << "discarded";
        swap(with, without);
    }
    EXPECT_EQ(logged(), Texts{});
    without << "!" << std::flush;
    EXPECT_EQ(logged(), Texts{"text!"});
}

TEST_F(ClogStreamBufTest, OwnChunkSizeGoesBeforeTheDefaultAndZeroMeansTheDefault) {
    set_default_clogger_chunking("default", 4);
    stream() << "a b c";
    EXPECT_EQ(logged(), (Texts{"a b", "\nc"}));
    stream() << Chunk(2) << "a b c";
    EXPECT_EQ(logged(), (Texts{"a", "\nb", "\nc"}));
    stream() << Chunk(2) << Chunk(0) << "a b c";
    EXPECT_EQ(logged(), (Texts{"a b", "\nc"}));
    set_default_clogger_chunking("default", 0);
}

TEST(ChunkTable, IsReadAndWrittenByTwoThreads) {
    const auto work = [](const std::string& own) {
        for (std::uint32_t i = 1; i <= 2000; ++i) {
            set_default_clogger_chunking(own + std::to_string(i % 50), i);
            set_default_clogger_chunking("shared", i);
            EXPECT_EQ(get_default_clogger_chunking(own + std::to_string(i % 50)), i);
            EXPECT_NE(get_default_clogger_chunking("shared"), 0U);
        }
    };
    std::thread other(work, "other");
    work("own");
    other.join();
    EXPECT_EQ(get_default_clogger_chunking("never set"), 0U);
}

TEST(ChunkTable, IsUnlockedInChildrenForkedWhileAThreadUsesIt) {
    std::atomic<bool> stop{false};
    std::thread busy([&] {
        while (!stop) {
            set_default_clogger_chunking("a name that needs memory", 0);
        }
    });
    for (int i = 0; i < 50; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(10);
            ::_exit(static_cast<int>(get_default_clogger_chunking("never set")));
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    stop = true;
    busy.join();
}

}  // namespace
}  // namespace nuv::logging
