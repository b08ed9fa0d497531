// SPDX-License-Identifier: Apache-2.0
#include "nuv/yajl_stream.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/json_text.hpp"

using nuv::serialization::YAJLStream;
using nuv::test::FullBuffer;
using nuv::test::json_of;
using Indentation = YAJLStream::YAJLIndentation;
using Steps = std::vector<std::function<bool(YAJLStream&)>>;

namespace {
const Steps ALL_WRITERS{
    [](YAJLStream& s) { return s.open_object(); },
    [](YAJLStream& s) { return s.write_string("list"); },
    [](YAJLStream& s) { return s.open_array(); },
    [](YAJLStream& s) { return s.write_bool(true); },
    [](YAJLStream& s) { return s.write_null(); },
    [](YAJLStream& s) { return s.write_string("a\"\n\xC3\xA4"); },
    [](YAJLStream& s) { return s.write_integer(-12L); },
    [](YAJLStream& s) { return s.write_integer(4294967295U); },
    [](YAJLStream& s) { return s.write_integer(18446744073709551615ULL); },
    [](YAJLStream& s) { return s.close_array(); },
    [](YAJLStream& s) { return s.close_object(); },
};
const std::string ALL_WRITTEN = "{\"list\":[true,null,\"a\\\"\\n\xC3\xA4\",-12,4294967295,-1]}";
}  // namespace

TEST(YAJLStream, LaysOutByIndentation) {
    const auto member = [](YAJLStream& s) {
        s.open_object(), s.write_string("a"), s.write_integer(5), s.close_object();
    };
    EXPECT_EQ(json_of(member, Indentation{0}), "{\"a\":5}");
    EXPECT_EQ(json_of(member, Indentation{1}), "{\n\t\"a\": 5\n}\n");
    EXPECT_EQ(json_of(member, Indentation{2}), "{\n    \"a\": 5\n}\n");
}

TEST(YAJLStream, TellsTheFirstWriterThatFoundTheStreamFullAndEveryOneAfterIt) {
    for (const bool throws : {false, true}) {
        for (const auto mask : {std::ios::goodbit, std::ios::badbit | std::ios::failbit}) {
            for (std::size_t room = 0; room <= ALL_WRITTEN.size(); ++room) {
                std::ostringstream whole;
                FullBuffer buffer(room, throws);
                std::ostream os(&buffer);
                os.exceptions(mask);
                YAJLStream reference(whole, Indentation{0});
                YAJLStream stream(os, Indentation{0});
                for (std::size_t i = 0; i < ALL_WRITERS.size(); ++i) {
                    EXPECT_TRUE(ALL_WRITERS[i](reference));
                    EXPECT_EQ(ALL_WRITERS[i](stream), whole.str().size() <= room)
                        << "writer " << i << ", room " << room;
                }
                EXPECT_EQ(whole.str(), ALL_WRITTEN);
                EXPECT_EQ(os.bad(), room < ALL_WRITTEN.size());
            }
        }
    }
}

TEST(YAJLStream, FailsOnAStreamThatFailedBefore) {
    for (const auto state : {std::ios::failbit, std::ios::badbit}) {
        std::ostringstream os;
        os.setstate(state);
        YAJLStream stream(os, Indentation{0});
        for (const auto& writer : ALL_WRITERS) {
            EXPECT_FALSE(writer(stream));
        }
        EXPECT_EQ(os.str(), "");
    }
}

TEST(YAJLStream, WritesThroughWhereTheStreamFlushesByItself) {
    FullBuffer buffer(100);
    FullBuffer tied_buffer(0);
    std::ostream os(&buffer);
    std::ostream tied(&tied_buffer);
    os << std::unitbuf;
    EXPECT_TRUE(YAJLStream(os, Indentation{0}).write_null());
    EXPECT_EQ(buffer.syncs, 1);
    os << std::nounitbuf;
    os.tie(&tied);
    EXPECT_TRUE(YAJLStream(os, Indentation{0}).write_null());
    EXPECT_EQ(tied_buffer.syncs, 1);
}

TEST(YAJLStream, RefusesWhatIsNoJson) {
    struct {
        const char* what;
        Steps accepted;
        std::function<bool(YAJLStream&)> refused;
    } const rows[] = {
        {"a key that is no string", {ALL_WRITERS[0]}, ALL_WRITERS[4]},
        {"a second document", {ALL_WRITERS[4]}, ALL_WRITERS[4]},
        {"not UTF-8", {}, [](YAJLStream& s) { return s.write_string("\xC3"); }},
        {"level 128", Steps(127, ALL_WRITERS[2]), ALL_WRITERS[2]},
    };
    for (const auto& row : rows) {
        std::ostringstream os;
        YAJLStream stream(os, Indentation{0});
        for (const auto& step : row.accepted) {
            EXPECT_TRUE(step(stream)) << row.what;
        }
        EXPECT_FALSE(row.refused(stream)) << row.what;
    }
}
