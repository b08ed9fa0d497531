// SPDX-License-Identifier: Apache-2.0
#include "nuv/yajl_stream.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/json_text.hpp"

using nuv::serialization::YAJLStream;
using nuv::test::FullBuffer;
using Indentation = YAJLStream::YAJLIndentation;
using Writer = std::function<bool(YAJLStream&)>;

namespace {
const std::vector<Writer> ALL_WRITERS{
    &YAJLStream::open_object,
    [](YAJLStream& s) { return s.write_string("list"); },
    &YAJLStream::open_array,
    [](YAJLStream& s) { return s.write_bool(true); },
    &YAJLStream::write_null,
    [](YAJLStream& s) { return s.write_string("a\"\n\xC3\xA4"); },
    [](YAJLStream& s) { return s.write_integer(-12L); },
    [](YAJLStream& s) { return s.write_integer(4294967295U); },
    [](YAJLStream& s) { return s.write_integer(18446744073709551615ULL); },
    &YAJLStream::close_array,
    &YAJLStream::close_object,
};
const std::string ALL_WRITTEN = "{\"list\":[true,null,\"a\\\"\\n\xC3\xA4\",-12,4294967295,-1]}";
}  // namespace

TEST(YAJLStream, LaysOutByIndentation) {
    const char* const expected[] = {"{\"a\":5}", "{\n\t\"a\": 5\n}\n", "{\n    \"a\": 5\n}\n"};
    for (std::uint8_t indentation = 0; indentation < 3; ++indentation) {
        std::ostringstream os;
        YAJLStream s(os, Indentation{indentation});
        EXPECT_TRUE(s.open_object() && s.write_string("a") && s.write_integer(5) &&
                    s.close_object());
        EXPECT_EQ(os.str(), expected[indentation]);
    }
}

TEST(YAJLStream, TellsTheFirstWriterThatFoundTheStreamFullAndEveryOneAfterIt) {
    for (std::size_t i = 0; i < 4 * (ALL_WRITTEN.size() + 1); ++i) {
        const std::size_t room = i / 4;
        std::ostringstream whole;
        FullBuffer buffer(room, (i & 1U) != 0);
        std::ostream os(&buffer);
        os.exceptions((i & 2U) != 0 ? std::ios::badbit | std::ios::failbit : std::ios::goodbit);
        YAJLStream reference(whole, Indentation{0});
        YAJLStream stream(os, Indentation{0});
        for (const Writer& writer : ALL_WRITERS) {
            EXPECT_TRUE(writer(reference));
            EXPECT_EQ(writer(stream), whole.str().size() <= room) << i << whole.str();
        }
        EXPECT_EQ(whole.str(), ALL_WRITTEN);
        EXPECT_EQ(buffer.text, ALL_WRITTEN.substr(0, room));
        EXPECT_EQ(os.bad(), room < ALL_WRITTEN.size());
    }
}

TEST(YAJLStream, HonoursAFailBitOfBeforeAndUnitBuffering) {
    FullBuffer buffer(100);
    std::ostream os(&buffer);
    os << std::unitbuf;
    EXPECT_TRUE(YAJLStream(os, Indentation{0}).write_null());
    EXPECT_EQ(buffer.syncs, 1);
    os.setstate(std::ios::failbit);
    EXPECT_FALSE(YAJLStream(os, Indentation{0}).write_null());
    EXPECT_EQ(buffer.text, "null");
}

TEST(YAJLStream, RefusesWhatIsNoJson) {
    struct {
        std::vector<Writer> accepted;
        Writer refused;
    } const rows[] = {
        {{&YAJLStream::open_object}, &YAJLStream::write_null},  // a key that is no string
        {{&YAJLStream::write_null}, &YAJLStream::write_null},   // a second document
        {{}, [](YAJLStream& s) { return s.write_string("\xC3"); }},
        {std::vector<Writer>(127, &YAJLStream::open_array), &YAJLStream::open_array},
    };
    for (const auto& row : rows) {
        std::ostringstream os;
        YAJLStream stream(os, Indentation{0});
        for (const Writer& writer : row.accepted) {
            EXPECT_TRUE(writer(stream));
        }
        EXPECT_FALSE(row.refused(stream)) << os.str();
    }
}
