// SPDX-License-Identifier: Apache-2.0
#include "nuv/ether_header.hpp"

#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

using nuv::EtherHeader;

TEST(EtherHeader, WritesThreeFlushedLinesWhateverTheFormat) {
    nuv::test::FullBuffer buffer(200);
    std::ostream os(&buffer);
    os << std::uppercase << std::showbase << std::setfill('*') << std::setw(9)
       << EtherHeader(nuv::MACAddress("00:1A:2B:3C:4D:5E"), nuv::MACAddress(), 0x88CC);
    EXPECT_EQ(buffer.text,
              "dest address: 00:1A:2B:3C:4D:5E\nsrc address: 00:00:00:00:00:00\nethertype: 88cc\n");
    EXPECT_TRUE(buffer.syncs == 3 && os.width() == 9 && os.fill() == '*');
}

TEST(EtherHeader, ComparesAndSwapsEveryField) {
    EtherHeader headers[] = {EtherHeader(0), EtherHeader(0x88CC), EtherHeader(0), EtherHeader(0)};
    headers[2].set_src_addr(nuv::MACAddress("00:1A:2B:3C:4D:5E"));
    headers[3].set_dest_addr(nuv::MACAddress("00:1A:2B:3C:4D:5E"));
    for (std::size_t i = 0; i < 16; ++i) {
        EtherHeader a = headers[i / 4], b = headers[i % 4];
        a.swap(b);
        EXPECT_TRUE(a == headers[i % 4] && b == headers[i / 4] && (a == b) == (i / 4 == i % 4));
        EXPECT_TRUE((b <=> a) == (i / 4 <=> i % 4) && (b < a) == (i / 4 < i % 4));
    }
}
