// SPDX-License-Identifier: Apache-2.0
#include "nuv/printable.hpp"

#include <clocale>

#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"

namespace nuv {
namespace {

TEST(Printable, TextFromOutsideIsFitForATerminalAndWellFormed) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    for (const auto& [text, expected] : test::listed_cases("printable.tsv")) {
        const auto printable = to_printable(text);
        const std::string utf8 = to_utf8(text);
        EXPECT_EQ(printable.text + '|' + std::to_string(printable.columns) + '|' + utf8, expected);
        EXPECT_EQ(is_utf8(text), text == utf8) << expected;
    }
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(to_printable("h\u00fctte").text, "h\\u00fctte");
}

}  // namespace
}  // namespace nuv
