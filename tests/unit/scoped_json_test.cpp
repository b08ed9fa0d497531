// SPDX-License-Identifier: Apache-2.0
#include "nuv/scoped_json.hpp"

#include <gtest/gtest.h>

#include "nuv/wrap_in_yajl.hpp"
#include "support/json_text.hpp"

using namespace nuv::serialization;
using nuv::test::written;

TEST(ScopedJSON, TellsWhichStepFailedBehindThePrefix) {
    // The prefix is a temporary that is gone when the guard closes.
    const auto object = [](YAJLStream& s) { const ScopedJSONObject guard(s, std::string("p: ")); };
    const auto array = [](YAJLStream& s) { const ScopedJSONArray guard(s, std::string("p: ")); };
    const char* const expected[] = {"p: Could not open object", "p: Could not close object", "{}",
                                    "p: Could not open array",  "p: Could not close array",  "[]"};
    for (std::size_t room = 0; room < 3; ++room) {
        EXPECT_EQ(written(object, room), expected[room]);
        EXPECT_EQ(written(array, room), expected[room + 3]);
    }
}

TEST(ScopedJSON, ClosesInSilenceWhileAnotherExceptionIsOnItsWay) {
    const auto unwound = [](YAJLStream& s) {
        const ScopedJSONArray guard(s, "p: ");
        throw std::runtime_error("other");
    };
    EXPECT_EQ(written<std::runtime_error>(unwound, 1), "other");
    EXPECT_EQ(written([&](YAJLStream& s) { EXPECT_THROW(unwound(s), std::runtime_error); }), "[]");
}

TEST(WrapInYAJL, WrapsWhatTheFunctionWritesAndTellsWhichStepFailed) {
    const auto wrapped = [](std::size_t room) {
        const auto nothing = [] {};
        const auto array_in_array = [&](YAJLStream& s) {
            wrap_in_yajl_array(s, [&] { wrap_in_yajl_array(s, nothing); });
        };
        const auto members = [&](YAJLStream& s) {
            wrap_in_yajl_object(s, [&] {
                wrap_in_yajl_object(s, "\"", nothing);
                wrap_in_yajl_array(s, "a", nothing);
            });
        };
        return written(array_in_array, room) + "; " + written(members, room);
    };
    const std::string in_array = "Wrapping function call in array failed: ";
    const std::string in_object = "Wrapping function call in object failed: ";
    const std::string member = "Wrapping function call in object \"\\\"\" failed: ";
    const std::string array_member = "Wrapping function call in array \"a\" failed: ";
    EXPECT_EQ(wrapped(0),
              in_array + "Could not open array; " + in_object + "Could not open object");
    EXPECT_EQ(wrapped(3), in_array + "Could not close array; " + member +
                              "Failed to write wrapper object name");
    EXPECT_EQ(wrapped(6), "[[]]; " + member + "Could not open object");
    EXPECT_EQ(wrapped(7), "[[]]; " + member + "Could not close object");
    EXPECT_EQ(wrapped(10), "[[]]; " + array_member + "Failed to write wrapper array name");
    EXPECT_EQ(wrapped(14), "[[]]; " + array_member + "Could not close array");
    EXPECT_EQ(wrapped(15), "[[]]; " + in_object + "Could not close object");
    EXPECT_EQ(wrapped(16), "[[]]; {\"\\\"\":{},\"a\":[]}");
}
