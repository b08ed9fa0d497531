// SPDX-License-Identifier: Apache-2.0
#include "nuv/limited_istream.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <stdexcept>
#include <type_traits>

#include "nuv_platform/fake/fake_platform.hpp"

namespace nuv {
namespace {

static_assert(!std::is_copy_constructible_v<LimitedIStream> &&
              !std::is_move_constructible_v<LimitedIStream>);

std::string read(std::istream& is, int n) {
    std::string text(static_cast<std::size_t>(n), '\0');
    is.read(text.data(), n);
    text.resize(static_cast<std::size_t>(is.gcount()));
    return text;
}

TEST(LimitedIStream, MovesTheParentBehindTheRangeReadOrNot) {
    const struct {
        int limit, read;
        const char* text;
        bool eof;
        int parent;
    } cases[] = {
        {0, 1, "", true, 1},       {5, 2, "bc", false, 6},         {5, 10, "bcdef", true, 6},
        {5, 5, "bcdef", false, 6}, {9, 9, "bcdefghij", false, 10},
    };
    for (const auto& c : cases) {
        std::istringstream parent("abcdefghij");
        parent.get();
        {
            LimitedIStream limited(parent, c.limit);
            EXPECT_EQ(limited.get_number_of_chars_to_limit(), c.limit);
            EXPECT_EQ(read(limited, c.read), c.text);
            EXPECT_EQ(limited.eof(), c.eof);
        }
        EXPECT_TRUE(parent.good());
        EXPECT_EQ(parent.tellg(), c.parent);
    }
}

TEST(LimitedIStream, CountsToTheLimitAlsoWhereTheParentEndsBefore) {
    std::istringstream parent("0123456789");
    {
        LimitedIStream limited(parent, 50);
        EXPECT_EQ(read(limited, 50), "0123456789");
        EXPECT_EQ(limited.get_number_of_chars_to_limit(), 40);
        EXPECT_TRUE(parent.good()) << "reading does not touch the parent's state";
    }
    EXPECT_TRUE(parent.fail()) << "a string stream has no position behind its end";
}

TEST(LimitedIStream, GreatestLimitIsNoLimit) {
    std::istringstream parent("abc");
    parent.get();
    LimitedIStream limited(parent, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(read(limited, 9), "bc");
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
    class Pipe : public std::streambuf {
    } pipe;
    std::istream unseekable(&pipe);
    std::istream none(nullptr);
    const auto text = [](std::istream& is) -> std::string {
        try {
            const LimitedIStream limited(is, 1);
        } catch (const std::logic_error& e) {
            return e.what();
        }
        return {};
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
    std::string failure;
    try {
        parent.setstate(std::ios_base::failbit);
    } catch (const std::ios_base::failure& e) {
        failure = e.what();
    }
    parent.clear();
    { const LimitedIStream limited(parent, 50); }
    ASSERT_EQ(fake.log().records().size(), 1U);
    const auto record = fake.log().records().front();
    EXPECT_EQ(record.text, "Failed to seek to the limit (50): " + failure);
    EXPECT_EQ(record.level, 0);
    EXPECT_EQ(record.module, "LimitedIStream");
    EXPECT_EQ(record.file, "src/shared/limited_istream");
    EXPECT_EQ(record.function, "~LimitedIStream");
    EXPECT_EQ(record.line, 169);
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
