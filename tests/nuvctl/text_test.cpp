// SPDX-License-Identifier: Apache-2.0
#include "tools/nuvctl/text/text.hpp"

#include "tests/support/test.hpp"
#include "tools/nuvctl/text/timestamp.hpp"

namespace nuvctl {
namespace {

TEST(Text, OctetsAreTwoDigitsEach) {
    EXPECT_EQ(to_hex(from_hex("00aF").value()), "00af");
    EXPECT_EQ(to_hex(from_hex("").value()), "");
    for (const char* wrong : {"0", "00a", "0g", "+1", " 1", "0x"}) {
        EXPECT_FALSE(from_hex(wrong)) << wrong;
    }
}

TEST(Timestamp, IsReadInOneForm) {
    for (const std::string text : {"1970-01-01T00:00:00.000000Z", "2016-02-29T23:59:59.999999Z",
                                   "2106-02-07T06:28:15.000000Z", "1969-12-31T23:59:59.999999Z",
                                   "0000-01-01T00:00:00.000000Z", "9999-12-31T23:59:59.999999Z"}) {
        EXPECT_EQ(to_string(parse_timestamp(text).value()), text);
    }
    for (const std::int64_t seconds : std::array<std::int64_t, 4>{
             -62'167'219'201, 253'402'300'800, std::numeric_limits<std::int64_t>::min(),
             std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(to_string(Timestamp{seconds, 0}), std::nullopt);
    }
    EXPECT_EQ(raw_text({253'402'300'800, 5}), "253402300800.000005");
    EXPECT_EQ(raw_text({-62'167'219'201, 500'000}), "-62167219200.500000");
    EXPECT_EQ(raw_text({-1, 1}), "-0.999999");
    EXPECT_EQ(raw_text({-1, 0}), "-1.000000");
    EXPECT_EQ(parse_timestamp("2015-11-03T12:34:56.123456Z")->seconds, 1446554096);
    for (const char* wrong :
         {"", "2015-11-03T12:34:60.123456Z", "2015-02-29T12:34:56.123456Z",
          "2015-11-03T12:34:56.12345Z", "2015-11-03T12:34:56.123456", "2015-11-03 12:34:56.123456Z",
          "2015-11-03T12:34:56.123456Z ", "2015-11-03T12:34:56Z"}) {
        EXPECT_FALSE(parse_timestamp(wrong)) << wrong;
    }
}

}  // namespace
}  // namespace nuvctl
