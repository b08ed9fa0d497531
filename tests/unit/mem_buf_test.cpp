// SPDX-License-Identifier: Apache-2.0
#include "nuv/mem_buf.hpp"

#include "tests/support/test.hpp"

namespace nuv {
namespace {

static_assert(!std::is_copy_constructible_v<MemBuf> && !std::is_move_constructible_v<MemBuf> &&
              !std::is_move_assignable_v<MemBuf> && !std::is_swappable_v<MemBuf>);

TEST(MemBuf, ReadsAndSeeksInTheCallersBytes) {
    const std::array<std::uint8_t, 3> bytes{'a', 0xFF, 'c'};
    MemBuf buffer(bytes);
    std::istream is(&buffer);
    EXPECT_EQ(buffer.in_avail(), 3);
    EXPECT_EQ(is.get(), 'a');
    EXPECT_EQ(is.get(), 0xFF);
    is.seekg(3);
    EXPECT_TRUE(is.good()) << "the end is a position";
    EXPECT_EQ(is.peek(), std::istream::traits_type::eof());
    is.seekg(4);
    EXPECT_TRUE(is.fail()) << "behind the end is none";
}

TEST(MemBuf, MayBeEmpty) {
    MemBuf buffer({});
    std::istream is(&buffer);
    EXPECT_EQ(is.peek(), std::istream::traits_type::eof());
}

}  // namespace
}  // namespace nuv
