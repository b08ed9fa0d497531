// SPDX-License-Identifier: Apache-2.0
#include "nuv/ether_header.hpp"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

#include "support/json_text.hpp"

using nuv::EtherHeader;
using nuv::MACAddress;

namespace {
const MACAddress DEST("00:1A:2B:3C:4D:5E");
const MACAddress SRC("80:00:00:00:00:01");
}  // namespace

TEST(EtherHeader, WritesThreeFlushedLinesWhateverTheFormat) {
    std::ostringstream os;
    os << std::uppercase << std::showbase << std::setfill('*') << std::setw(9);
    const auto flags = os.flags();
    os << EtherHeader(DEST, SRC, 0x88CC) << EtherHeader(0);
    EXPECT_EQ(os.str(),
              "dest address: 00:1A:2B:3C:4D:5E\nsrc address: 80:00:00:00:00:01\nethertype: 88cc\n"
              "dest address: 00:00:00:00:00:00\nsrc address: 00:00:00:00:00:00\nethertype: 0\n");
    EXPECT_EQ(os.width(), 9);
    EXPECT_EQ(os.fill(), '*');
    EXPECT_EQ(os.flags(), flags);

    nuv::test::FullBuffer buffer(200);
    std::ostream(&buffer) << EtherHeader(1);
    EXPECT_EQ(buffer.syncs, 3);
}

TEST(EtherHeader, ComparesAndSwapsEveryField) {
    const EtherHeader header(DEST, SRC, 0x88CC);
    EtherHeader changed = header;
    changed.set_dest_addr(SRC);
    EXPECT_NE(changed, header);
    changed = header;
    changed.set_src_addr(DEST);
    EXPECT_NE(changed, header);
    changed = header;
    changed.set_ethertype(0xCC88);
    EXPECT_NE(changed, header);

    EtherHeader other(1);
    changed.swap(other);
    EXPECT_EQ(changed, EtherHeader(MACAddress(), MACAddress(), 1));
    EXPECT_EQ(other.get_dest_addr(), DEST);
    EXPECT_EQ(other.get_src_addr(), SRC);
    EXPECT_EQ(other.get_ethertype(), 0xCC88);
}
