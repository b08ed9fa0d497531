// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale>
#include <memory>
#include <string>

namespace nuv::test {

/// While it lives, new streams write 1.000,5.
class ForeignLocale {
public:
    struct Punctuation : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    ForeignLocale()
        : before_(std::locale::global(
              std::locale(std::locale::classic(), std::make_unique<Punctuation>().release()))) {}
    ~ForeignLocale() { std::locale::global(before_); }
    ForeignLocale(const ForeignLocale&) = delete;
    ForeignLocale& operator=(const ForeignLocale&) = delete;

private:
    std::locale before_;
};

}  // namespace nuv::test
