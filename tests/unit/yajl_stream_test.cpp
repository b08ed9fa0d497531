// SPDX-License-Identifier: Apache-2.0
#include "nuv/yajl_stream.hpp"

#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

using nuv::test::FullBuffer;
using nuv::test::YAJLStream;
using Indentation = YAJLStream::YAJLIndentation;

TEST(YAJLStream, LaysOutByIndentation) {
    const char* const expected[] = {"{\"a\":5}", "{\n\t\"a\": 5\n}\n", "{\n    \"a\": 5\n}\n"};
    for (std::uint8_t indentation = 0; indentation < 3; ++indentation) {
        std::ostringstream os;
        YAJLStream s(os, Indentation{indentation});
        EXPECT_TRUE(s.open_object() && s.write_string("a") && s.write_integer(5) &&
                    s.close_object() && os.str() == expected[indentation]);
    }
}

TEST(YAJLStream, TellsTheFirstWriterThatFoundTheStreamFullAndEveryOneAfterIt) {
    const std::string text = "{\"list\":[true,null,\"a\\n\xC3\xA4\",-12,4294967295,-1]}";
    const std::vector<std::size_t> ends{1, 7, 9, 13, 18, 26, 30, 41, 44, 45, 46};
    for (std::size_t i = 0; i < 4 * (text.size() + 1); ++i) {
        const std::size_t room = i / 4;
        FullBuffer buffer(room, (i & 1U) != 0);
        std::ostream os(&buffer);
        os.exceptions((i & 2U) != 0 ? std::ios::badbit | std::ios::failbit : std::ios::goodbit);
        YAJLStream s(os, Indentation::COMPACT);
        const std::vector<bool> results{s.open_object(),        s.write_string("list"),
                                        s.open_array(),         s.write_bool(true),
                                        s.write_null(),         s.write_string("a\n\xC3\xA4"),
                                        s.write_integer(-12L),  s.write_integer(4294967295U),
                                        s.write_integer(~0ULL), s.close_array(),
                                        s.close_object()};
        for (std::size_t k = 0; k < ends.size(); ++k) {
            EXPECT_EQ(results[k], ends[k] <= room) << "writer " << k << ", room " << room;
        }
        EXPECT_EQ(buffer.text, text.substr(0, room));
        EXPECT_EQ(os.bad(), room < text.size());
    }
}

TEST(YAJLStream, HonoursUnitBufferingAndAFailBitOfBeforeAndIgnoresAnEndOfFile) {
    FullBuffer buffer(100);
    std::ostream os(&buffer);
    os << std::unitbuf;
    EXPECT_TRUE(YAJLStream(os, Indentation::COMPACT).write_null() && buffer.syncs == 1);
    os.setstate(std::ios::eofbit);
    EXPECT_TRUE(YAJLStream(os, Indentation::COMPACT).write_bool(true) && os.eof() && !os.fail());
    os.setstate(std::ios::failbit);
    EXPECT_FALSE(YAJLStream(os, Indentation::COMPACT).write_null());
    EXPECT_EQ(buffer.text, "nulltrue");
}

TEST(YAJLStream, RefusesWhatIsNoJson) {
    std::ostringstream os;
    YAJLStream object(os, Indentation::COMPACT), array(os, Indentation::COMPACT);
    EXPECT_TRUE(object.open_object() && !object.write_null());   // a key is a string
    EXPECT_TRUE(object.close_object() && !object.open_array());  // one document
    for (int level = 1; level <= 128; ++level) {
        EXPECT_EQ(array.open_array(), level < 128);
    }
    EXPECT_FALSE(array.write_string("\xC3"));
}
