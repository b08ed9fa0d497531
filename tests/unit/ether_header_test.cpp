// SPDX-License-Identifier: Apache-2.0
#include "nuv/ether_header.hpp"

#include <gtest/gtest.h>

#include <iomanip>

#include "support/json_text.hpp"

using nuv::EtherHeader;
using nuv::MACAddress;

TEST(EtherHeader, WritesThreeFlushedLinesWhateverTheFormat) {
    nuv::test::FullBuffer buffer(200);
    std::ostream os(&buffer);
    os << std::uppercase << std::showbase << std::setfill('*') << std::setw(9);
    const auto flags = os.flags();
    os << EtherHeader(MACAddress("00:1A:2B:3C:4D:5E"), MACAddress("80:00:00:00:00:01"), 0x88CC);
    EXPECT_EQ(buffer.text,
              "dest address: 00:1A:2B:3C:4D:5E\nsrc address: 80:00:00:00:00:01\nethertype: 88cc\n");
    EXPECT_EQ(buffer.syncs, 3);
    EXPECT_TRUE(os.width() == 9 && os.fill() == '*' && os.flags() == flags);
}

TEST(EtherHeader, ComparesAndSwapsEveryField) {
    const MACAddress address("00:1A:2B:3C:4D:5E");
    EtherHeader dest(0), src(0), type(0);
    dest.set_dest_addr(address);
    src.set_src_addr(address);
    type.set_ethertype(0x88CC);
    for (EtherHeader header : {dest, src, type}) {
        EtherHeader other(0);
        EXPECT_FALSE(header == other);
        header.swap(other);
        EXPECT_EQ(header, EtherHeader(MACAddress(), MACAddress(), 0));
        EXPECT_EQ(other.get_dest_addr() == address, other == dest);
        EXPECT_EQ(other.get_src_addr() == address, other == src);
        EXPECT_EQ(other.get_ethertype() == 0x88CC, other == type);
    }
}
