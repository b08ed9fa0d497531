// SPDX-License-Identifier: Apache-2.0
#include "nuv/printable.hpp"

#include <clocale>

#include "tests/support/test.hpp"

namespace nuv {
namespace {

TEST(Printable, TextFromOutsideIsFitForATerminalAndWellFormed) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
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
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(to_printable("h\u00fctte").text, "h\\u00fctte");
}

}  // namespace
}  // namespace nuv
