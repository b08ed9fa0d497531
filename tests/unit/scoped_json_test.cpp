// SPDX-License-Identifier: Apache-2.0
#include "nuv/scoped_json.hpp"

#include <gtest/gtest.h>

#include "nuv/wrap_in_yajl.hpp"
#include "support/json_text.hpp"

using namespace nuv::serialization;
using nuv::test::FullBuffer;
using nuv::test::json_of;
using nuv::test::message_of;

namespace {
/// The message of `function` on a stream with room for `room` bytes.
std::string failure(std::size_t room, auto&& function) {
    FullBuffer buffer(room);
    std::ostream os(&buffer);
    YAJLStream stream(os, YAJLStream::YAJLIndentation{0});
    return message_of<std::exception>([&] { function(stream); });
}
const auto nothing = [] {};
}  // namespace

TEST(ScopedJSON, TellsWhichStepFailedBehindThePrefix) {
    // The prefix is a temporary that is gone when the guard closes.
    const auto object = [](YAJLStream& s) { const ScopedJSONObject guard(s, std::string("p: ")); };
    const auto array = [](YAJLStream& s) { const ScopedJSONArray guard(s, std::string("p: ")); };
    EXPECT_EQ(failure(0, object), "p: Could not open object");
    EXPECT_EQ(failure(1, object), "p: Could not close object");
    EXPECT_EQ(failure(2, object), "");
    EXPECT_EQ(failure(0, array), "p: Could not open array");
    EXPECT_EQ(failure(1, array), "p: Could not close array");
    EXPECT_EQ(json_of(object) + json_of(array), "{}[]");
}

TEST(ScopedJSON, ClosesInSilenceWhileAnotherExceptionIsOnItsWay) {
    const auto unwound = [](YAJLStream& s) {
        const ScopedJSONArray guard(s, "p: ");
        throw std::runtime_error("other");
    };
    EXPECT_EQ(failure(1, unwound), "other");
    EXPECT_EQ(json_of([&](YAJLStream& s) { EXPECT_THROW(unwound(s), std::runtime_error); }), "[]");
}

TEST(WrapInYAJL, WrapsWhatTheFunctionWrites) {
    EXPECT_EQ(json_of([](YAJLStream& s) {
                  wrap_in_yajl_object(s, [&] {
                      wrap_in_yajl_object(s, "o", nothing);
                      wrap_in_yajl_array(s, "a", [&] { wrap_in_yajl_array(s, nothing); });
                  });
              }),
              "{\"o\":{},\"a\":[[]]}");
}

TEST(WrapInYAJL, TellsWhichStepFailed) {
    const auto object = [](YAJLStream& s) { wrap_in_yajl_object(s, nothing); };
    const auto array = [](YAJLStream& s) { wrap_in_yajl_array(s, nothing); };
    const auto named = [](YAJLStream& s) {
        s.open_object();
        wrap_in_yajl_object(s, "n\"", nothing);
    };
    const auto named_array = [](YAJLStream& s) {
        s.open_object();
        wrap_in_yajl_array(s, "n", nothing);
    };
    struct {
        std::string actual;
        const char* expected;
    } const rows[] = {
        {failure(0, object), "Wrapping function call in object failed: Could not open object"},
        {failure(1, object), "Wrapping function call in object failed: Could not close object"},
        {failure(0, array), "Wrapping function call in array failed: Could not open array"},
        {failure(1, array), "Wrapping function call in array failed: Could not close array"},
        {failure(1, named),
         "Wrapping function call in object \"n\\\"\" failed: "
         "Failed to write wrapper object name"},
        {failure(6, named),
         "Wrapping function call in object \"n\\\"\" failed: Could not open object"},
        {failure(1, named_array),
         "Wrapping function call in array \"n\" failed: Failed to write wrapper array name"},
        {failure(6, named_array),
         "Wrapping function call in array \"n\" failed: Could not close array"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.actual, row.expected);
    }
}
