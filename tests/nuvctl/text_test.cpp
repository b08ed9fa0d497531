// SPDX-License-Identifier: Apache-2.0
#include "tools/nuvctl/text/text.hpp"

#include <gtest/gtest.h>

#include <clocale>

#include "tools/nuvctl/text/timestamp.hpp"

namespace nuvctl {
namespace {

TEST(Text, FromOutsideIsMadePrintableAndWellFormed) {
    std::setlocale(LC_CTYPE, "C.UTF-8");  // as the tool does
    const struct {
        std::string text, printable;
        std::size_t columns;
        std::string utf8;
    } rows[] = {
        {"net 1", "net 1", 5, "net 1"},
        {"a\\b", "a\\\\b", 4, "a\\b"},
        {"\x1b[m\n", "\\x1b[m\\x0a", 10, "\x1b[m\n"},
        {"h\u00fctte \u65e5\u672c", "h\u00fctte \u65e5\u672c", 10, "h\u00fctte \u65e5\u672c"},
        {"\u202e\U000e0001", "\\u202e\\ue0001", 13, "\u202e\U000e0001"},
        {"\xc3(\xff", "\\xc3(\\xff", 9, "\ufffd(\ufffd"},
        {"\xe2\x82", "\\xe2\\x82", 8, "\ufffd\ufffd"},
        {"\xc0\xaf", "\\xc0\\xaf", 8, "\ufffd\ufffd"},                  // too long
        {"\xed\xa0\x80", "\\xed\\xa0\\x80", 12, "\ufffd\ufffd\ufffd"},  // a surrogate
        {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80", 16,
         "\ufffd\ufffd\ufffd\ufffd"},  // no character
    };
    for (const auto& row : rows) {
        EXPECT_EQ(to_printable(row.text).text, row.printable);
        EXPECT_EQ(to_printable(row.text).columns, row.columns) << row.printable;
        EXPECT_EQ(to_utf8(row.text), row.utf8) << row.printable;
        EXPECT_EQ(is_utf8(row.text), row.text == row.utf8) << row.printable;
    }
}

TEST(Text, OctetsAreTwoDigitsEach) {
    EXPECT_EQ(to_hex(from_hex("00aF").value()), "00af");
    EXPECT_EQ(to_hex(from_hex("").value()), "");
    for (const char* wrong : {"0", "00a", "0g", "+1", " 1", "0x"}) {
        EXPECT_FALSE(from_hex(wrong)) << wrong;
    }
}

TEST(Timestamp, IsReadInOneForm) {
    for (const std::string text : {"1970-01-01T00:00:00.000000Z", "2016-02-29T23:59:59.999999Z"}) {
        EXPECT_EQ(to_string(parse_timestamp(text).value()), text);
    }
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
