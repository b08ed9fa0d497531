// SPDX-License-Identifier: Apache-2.0
#include "nuv/limited_istream.hpp"

#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"

namespace nuv {
namespace {

static_assert(!std::is_copy_constructible_v<LimitedIStream> &&
              !std::is_move_constructible_v<LimitedIStream>);

/// In one operation, or one by one.
std::string read(std::istream& is, int n, bool at_once = true) {
    std::string text(static_cast<std::size_t>(n), '\0');
    if (at_once) {
        is.read(text.data(), n);
        text.resize(static_cast<std::size_t>(is.gcount()));
        return text;
    }
    text.clear();
    for (int c = 0; n > 0 && (c = is.get()) != std::istream::traits_type::eof(); --n) {
        text += static_cast<char>(c);
    }
    return text;
}

TEST(LimitedIStream, MovesTheParentBehindTheRangeReadOrNot) {
    constexpr std::int64_t unlimited = std::numeric_limits<std::int64_t>::max();
    // Limit and octets asked for; text, end of file, what is left to the limit, and where the parent
    // stands: nowhere, where that is behind its end.
    const std::tuple<std::int64_t, int, const char*, bool, std::int64_t, int> table[] = {
        {0, 1, "", true, 0, 1},
        {5, 2, "bc", false, 3, 6},
        {5, 10, "bcdef", true, 0, 6},
        {5, 5, "bcdef", false, 0, 6},
        {9, 9, "bcdefghij", false, 0, 10},
        {50, 50, "bcdefghij", true, 41, -1},
        {unlimited, 50, "bcdefghij", true, unlimited - 10, -1},
    };
    for (const auto& [limit, asked, text, eof, left, behind] : table) {
        for (const bool at_once : {true, false}) {
            std::istringstream parent("abcdefghij");
            parent.get();
            {
                LimitedIStream limited(parent, limit);
                EXPECT_EQ(limited.get_number_of_chars_to_limit(),
                          limit == unlimited ? unlimited - 1 : limit);
                EXPECT_EQ(read(limited, asked, at_once), text);
                EXPECT_EQ(limited.eof(), eof);
                EXPECT_EQ(limited.get_number_of_chars_to_limit(), left);
                EXPECT_TRUE(parent.good()) << "reading does not touch the parent's state";
            }
            EXPECT_EQ(parent.tellg(), behind);
        }
    }
}

TEST(LimitedIStream, PositionsAreTheParents) {
    std::istringstream parent("abcdefghij");
    parent.seekg(4);
    LimitedIStream limited(parent, 3);
    EXPECT_EQ(limited.tellg(), 4);
    limited.seekg(0);
    EXPECT_EQ(limited.get(), 'a') << "seeking back before the range is allowed";
    limited.seekg(0, std::ios_base::end);
    EXPECT_EQ(limited.tellg(), 7);
    EXPECT_EQ(limited.peek(), std::istream::traits_type::eof());
    limited.seekg(-1, std::ios_base::end);
    EXPECT_EQ(limited.rdbuf()->in_avail(), 1);
    EXPECT_EQ(limited.get(), 'g');
    EXPECT_EQ(limited.rdbuf()->in_avail(), -1);
    limited.seekg(8);
    EXPECT_TRUE(limited.fail());
    limited.clear();
    EXPECT_EQ(limited.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::out),
              impl::LimitedInputStreambuf::INVALID_POS);
    EXPECT_EQ(limited.rdbuf()->pubseekoff(-8, std::ios_base::cur, std::ios_base::in),
              impl::LimitedInputStreambuf::INVALID_POS);
    EXPECT_EQ(limited.tellg(), 7) << "refused seeks touch nothing";
}

TEST(LimitedIStream, PeekDoesNotCountAndPutbackFails) {
    std::istringstream parent("ab");
    LimitedIStream limited(parent, 2);
    EXPECT_EQ(limited.peek(), 'a');
    EXPECT_EQ(limited.get_number_of_chars_to_limit(), 2);
    limited.get();
    limited.unget();
    EXPECT_TRUE(limited.bad());
}

TEST(LimitedIStream, OverlongInnerRangeFailsTheMiddleStreamOnly) {
    std::istringstream root("0123456789");
    {
        LimitedIStream outer(root, 4);
        {
            LimitedIStream inner(outer, 6);
            EXPECT_EQ(read(inner, 6), "0123");
            EXPECT_EQ(inner.get_number_of_chars_to_limit(), 2);
        }
        EXPECT_TRUE(outer.fail());
    }
    EXPECT_TRUE(root.good());
    EXPECT_EQ(root.tellg(), 4);
}

TEST(LimitedIStream, LeavesAFailedParentWhereItStands) {
    std::istringstream parent("abcdef");
    {
        LimitedIStream limited(parent, 3);
        limited.get();
        parent.setstate(std::ios_base::failbit);
    }
    parent.clear();
    EXPECT_EQ(parent.tellg(), 1);
}

TEST(LimitedIStream, NeedsABufferWithAPosition) {
    test::FullBuffer pipe(0);
    std::istream unseekable(&pipe);
    std::istream none(nullptr);
    const auto text = [](std::istream& is) {
        return test::message_of<std::logic_error>([&] { LimitedIStream(is, 1); });
    };
    EXPECT_EQ(text(unseekable),
              "Failed to fetch the current read position of the underlying streambuf");
    EXPECT_EQ(text(none), "Underlying std::istream must have a streambuf");
}

TEST(LimitedIStream, LogsAFailureOfItsSeekWhereTheParentThrowsIt) {
    platform::FakePlatform fake;
    std::istringstream parent("abc");
    { const LimitedIStream silent(parent, 50); }
    EXPECT_TRUE(fake.log().records().empty());

    parent.clear();
    parent.exceptions(std::ios_base::failbit);
    const std::string failure =
        test::message_of<std::ios_base::failure>([&] { parent.setstate(std::ios_base::failbit); });
    parent.clear();
    { const LimitedIStream limited(parent, 50); }
    EXPECT_EQ(fake.log().records(),
              (std::vector<platform::FakeLog::Record>{
                  {0, "default", "LimitedIStream", "src/shared/limited_istream", "~LimitedIStream",
                   169, 0, "Failed to seek to the limit (50): " + failure}}));
}

TEST(LimitedInputStreambuf, SwapsWhatItReadsFromAndWhereItStands) {
    std::istringstream first("abc");
    std::istringstream second("xyz");
    impl::LimitedInputStreambuf a(first.rdbuf(), 1);
    impl::LimitedInputStreambuf b(second.rdbuf(), 2);
    a.swap(b);
    EXPECT_EQ(a.get_number_of_chars_to_limit(), 2);
    EXPECT_EQ(b.sbumpc(), 'a');
    EXPECT_FALSE(b.is_pos_in_range());
    EXPECT_EQ(a.sbumpc(), 'x');
    EXPECT_EQ(std::streamoff{a.get_limit_position()}, 2);
}

}  // namespace
}  // namespace nuv
