// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clog_stream_buf.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "nuv/logging/chunk_io_manipulator.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "nuv_platform/fake.hpp"

namespace nuv::logging {
namespace {

using Texts = std::vector<std::string>;

class ClogStreamBufTest : public testing::Test {
protected:
    ClogStreamBuf stream() const { return ClogmodProxy("m").get_ostream(0, "f", "g", 1); }

    /// What was logged since the last call.
    Texts logged() {
        auto texts = platform.log().texts();
        platform.log().clear_records();
        return texts;
    }

    Texts logged(const std::string& text, std::uint32_t chunk = 0) {
        stream() << ChunkIOManipulator(chunk) << text;
        return logged();
    }

    platform::FakePlatform platform;
};

TEST_F(ClogStreamBufTest, LongTextIsCutAtNewlinesThenBlanksThenHard) {
    const struct {
        std::string text;
        std::uint32_t chunk;
        Texts pieces;
    } rows[] = {
        {"a b c", 2, {"a", "\nb", "\nc"}},
        {"0123456789", 4, {"0123", "\n456", "\n789"}},
        {" abcdefgh", 4, {"", "\nabc", "\ndef", "\ngh"}},
        {"ab\ncd ef gh", 6, {"ab", "\ncd ef", "\ngh"}},
        {"aaaa bbbb", 4, {"aaaa", "\nbbb", "\nb"}},
        {"abcde", 4, {"abcd", "\ne"}},
        {"\nabcdef", 4, {"\nabc", "\ndef"}},
        {"abcd", 4, {"abcd"}},
        {"a b c", 1, {"a b c"}},
        {"a b c", 0xFFFFFFFF, {"a b c"}},
        {"", 2, {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(logged(row.text, row.chunk), row.pieces) << row.text << " by " << row.chunk;
    }
}

}  // namespace
}  // namespace nuv::logging
