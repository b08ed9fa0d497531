// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clog_stream_buf.hpp"

#include <gtest/gtest.h>

#include <locale>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "nuv/logging/chunk_io_manipulator.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "nuv_platform/fake/fake_platform.hpp"

namespace nuv::logging {
namespace {

using Texts = std::vector<std::string>;

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
    const struct {
        std::string text;
        std::uint32_t chunk;
        Texts pieces;
    } rows[] = {
        {"a b c", 2, {"a", "\nb", "\nc"}},
        {"0123456789", 4, {"0123", "\n456", "\n789"}},
        {" abcdefgh", 4, {"", "\nabc", "\ndef", "\ngh"}},
        {"ab\ncd ef gh", 6, {"ab", "\ncd ef", "\ngh"}},
        {"aaaa bbbb", 4, {"aaaa", "\nbbb", "\nb"}},
        {"abcde", 4, {"abcd", "\ne"}},
        {"\nabcdef", 4, {"\nabc", "\ndef"}},
        {"abcd", 4, {"abcd"}},
        {"a b c", 1, {"a b c"}},
        {"a b c", 0xFFFFFFFF, {"a b c"}},
        // NULs go first, then one newline, then it is cut
        {std::string("ab\0\0 cd\n\0", 9), 5, {"ab cd"}},
    };
    for (const auto& row : rows) {
        stream() << ChunkIOManipulator(row.chunk) << row.text;
        EXPECT_EQ(logged(), row.pieces) << row.text << " by " << row.chunk;
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
        stream() << ChunkIOManipulator(chunk) << text;
        const Texts pieces = logged();
        std::string joined = pieces.at(0);
        for (std::size_t i = 1; i < pieces.size(); ++i) {
            ASSERT_EQ(pieces[i].at(0), '\n');
            const std::string rest = pieces[i].substr(1);
            const char at_cut = text.at(joined.size());
            if ((at_cut == ' ' || at_cut == '\n') &&
                text.compare(joined.size() + 1, rest.size(), rest) == 0) {
                joined += at_cut;
            } else {
                ASSERT_EQ(pieces[i - 1].size(), chunk) << text;  // a hard cut
            }
            joined += rest;
            ASSERT_LE(pieces[i].size(), chunk) << text;
        }
        ASSERT_EQ(joined, text) << chunk;
    }
}

TEST_F(ClogStreamBufTest, OneNewlineAtTheEndIsDropped) {
    for (const auto& [text, record] : {std::pair<std::string, std::string>{"a\n", "a"},
                                       {"a\n\n", "a\n"},
                                       {"\n", ""},
                                       {std::string("\n\0", 2), ""}}) {
        stream() << text;
        EXPECT_EQ(logged(), Texts{record});
    }
}

TEST_F(ClogStreamBufTest, StatementLogsOneRecord) {
    stream() << "a " << 1;
    EXPECT_EQ(logged(), Texts{"a 1"});
    stream() << "a" << std::endl;  // nothing is left for the destructor
    EXPECT_EQ(logged(), Texts{"a"});
    stream();
    stream() << "";
    EXPECT_EQ(logged(), Texts{});
    stream() << std::flush;  // asked for, so it is logged, empty as it is
    EXPECT_EQ(logged(), Texts{""});
    stream() << "a" << std::flush << "b" << std::flush << "c";
    EXPECT_EQ(logged(), (Texts{"a", "b", "c"}));
    stream() << "%n%s";
    EXPECT_EQ(logged(), Texts{"%n%s"});
}

TEST_F(ClogStreamBufTest, PendingTextIsLoggedWhateverTheStreamSays) {
    stream().seekp(0);
    {
        auto s = stream();
        s << "abc";
        s.seekp(0);
    }
    EXPECT_EQ(logged(), Texts{"abc"});
    {
        auto s = stream();
        s << "abc";
        s.setstate(std::ios_base::failbit);
        s.flush();  // does nothing on a failed stream
        EXPECT_EQ(logged(), Texts{});
    }
    EXPECT_EQ(logged(), Texts{"abc"});
}

TEST_F(ClogStreamBufTest, MovedStreamCarriesTextChunkSizeAndDestination) {
    std::optional<ClogStreamBuf> from(stream());
    *from << ChunkIOManipulator(2) << "a ";
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

TEST_F(ClogStreamBufTest, LocaleIsTheStreams) {
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    auto s = stream();
    s.imbue(std::locale(std::locale::classic(), std::make_unique<Comma>().release()));
    EXPECT_TRUE(std::has_facet<std::numpunct<char>>(s.getloc()));
    s << 1.5 << std::flush;
    EXPECT_EQ(logged(), Texts{"1,5"});
}

TEST_F(ClogStreamBufTest, OwnChunkSizeGoesBeforeTheDefaultAndZeroMeansTheDefault) {
    stream() << "a b c";
    EXPECT_EQ(logged(), Texts{"a b c"});
    set_default_clogger_chunking("default", 4);
    stream() << "a b c";
    EXPECT_EQ(logged(), (Texts{"a b", "\nc"}));
    stream() << ChunkIOManipulator(2) << "a b c";
    EXPECT_EQ(logged(), (Texts{"a", "\nb", "\nc"}));
    stream() << ChunkIOManipulator(2) << ChunkIOManipulator(0) << "a b c";
    EXPECT_EQ(logged(), (Texts{"a b", "\nc"}));
    set_default_clogger_chunking("default", 0);
}

}  // namespace
}  // namespace nuv::logging
