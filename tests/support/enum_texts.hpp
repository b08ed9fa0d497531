// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace nuv::test {

enum class Number { NONE, APPENDED };

/// What an enumeration prints and reads: the named texts from value 0 on, separated by '|' and
/// empty where a value has none; the text of all other values; named values above the list.
struct EnumTexts {
    EnumTexts(std::string_view list, std::string invalid, Number number = Number::NONE,
              std::map<int, std::string> further = {})
        : named(std::move(further)), invalid_text(std::move(invalid)), appended(number) {
        for (int value = 0; !list.empty(); ++value) {
            const auto text = list.substr(0, list.find('|'));
            if (!text.empty()) {
                named.emplace(value, text);
            }
            list.remove_prefix(std::min(list.size(), text.size() + 1));
        }
    }

    std::string of(int value) const {
        const auto row = named.find(value);
        if (row != named.end()) {
            return row->second;
        }
        return invalid_text + (appended == Number::APPENDED ? std::to_string(value) : "");
    }

    std::map<int, std::string> named;
    std::string invalid_text;
    Number appended;
};

/// All 256 values: text, stream, and, where texts are read, both directions and near misses.
template <class E>
void expect_texts(const EnumTexts& texts) {
    SCOPED_TRACE(texts.invalid_text);
    std::map<std::string, int> readable;
    for (const auto& [value, text] : texts.named) {
        EXPECT_TRUE(readable.emplace(text, value).second) << text << " stands for two values";
    }
    for (int i = 0; i < 256; ++i) {
        const auto value = static_cast<E>(i);
        std::ostringstream os;
        os << std::hex << value;
        EXPECT_EQ(os.str(), texts.of(i)) << "value " << i;
        if constexpr (requires { enum_to_string(value); }) {
            const std::string text = texts.of(i);
            EXPECT_EQ(enum_to_string(value), text) << "value " << i;
            std::string lower = text;
            for (char& c : lower) {
                c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            }
            for (const std::string& candidate : {text, lower, " " + text, text + " ", text + '\0',
                                                 text.substr(0, text.size() - 1), std::string()}) {
                const auto row = readable.find(candidate);
                const E before{static_cast<std::uint8_t>(~i)};
                E out = before;
                EXPECT_EQ(string_to_enum(candidate, out), row != readable.end()) << candidate;
                EXPECT_EQ(out, row != readable.end() ? static_cast<E>(row->second) : before)
                    << candidate;
            }
        }
    }
}

}  // namespace nuv::test
