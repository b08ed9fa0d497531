// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sstream>

#include "nuv/channels.hpp"
#include "support/json_text.hpp"
#include "support/listed_cases.hpp"

namespace nuv::test {
namespace {

/// What writing `value` says where there is room for ever more bytes.
std::string refusals(const auto& value) {
    std::string messages;
    std::string last;
    for (std::size_t room = 0; room < to_json(value).size(); ++room) {
        const std::string message = to_json(value, room);
        if (message != last) {
            messages += (last.empty() ? "" : "|") + message;
        }
        last = message;
    }
    return messages;
}

template <class T>
std::string outcome(const std::string& what, const std::string& json) {
    T value;
    const std::string failure = from_json("{\"v\":" + json + "}", "v", value);
    std::ostringstream text;
    text << std::hex << value;
    return !failure.empty()     ? failure
           : what == "text"     ? text.str()
           : what == "refusals" ? refusals(value)
                                : to_json(value);
}

TEST(ChannelJSON, IsReadAndWrittenAsListed) {
    const auto cases = listed_cases("channel_model.tsv");
    EXPECT_GT(cases.size(), 35U);
    for (const auto& [call, expected] : cases) {
        std::istringstream is(call);
        std::string kind;
        std::string what;
        std::string json;
        std::getline(is >> kind >> what >> std::ws, json);
        std::string got = (kind == "entry"  ? outcome<ChannelEntry>
                           : kind == "info" ? outcome<ChannelInfo>
                           : kind == "list" ? outcome<ChannelList>
                                            : outcome<NSSTable>)(what, json);
        for (std::size_t at = 0; (at = got.find('\n', at)) != std::string::npos;) {
            got.replace(at, 1, "\\n");
        }
        EXPECT_EQ(got, expected) << call;
    }
}

}  // namespace
}  // namespace nuv::test
