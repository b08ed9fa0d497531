// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>

#include "nuv/channels.hpp"
#include "support/json_text.hpp"

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
    std::ifstream file(NUV_SOURCE_DIR "/tests/vectors/channel_model.tsv");
    std::string kind;
    std::string what;
    std::string json;
    int rows = 0;
    while (file >> kind && std::getline(file >> what, json)) {
        if (kind == "#") {
            continue;
        }
        ++rows;
        const std::size_t tab = json.find('\t', 1);
        const std::string expected = json.substr(tab + 1);
        json = json.substr(1, tab - 1);
        std::string got = (kind == "entry"  ? outcome<ChannelEntry>
                           : kind == "info" ? outcome<ChannelInfo>
                           : kind == "list" ? outcome<ChannelList>
                                            : outcome<NSSTable>)(what, json);
        for (std::size_t at = 0; (at = got.find('\n', at)) != std::string::npos;) {
            got.replace(at, 1, "\\n");
        }
        EXPECT_EQ(got, expected) << kind << ' ' << json;
    }
    EXPECT_GT(rows, 35);
}

}  // namespace
}  // namespace nuv::test
