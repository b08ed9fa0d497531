// SPDX-License-Identifier: Apache-2.0
#include "nuv/scoped_json.hpp"

#include "nuv/wrap_in_yajl.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

namespace nuv::test {

using serialization::ScopedJSONArray;
using serialization::ScopedJSONObject;

TEST(ScopedJSON, TellsWhichStepFailedBehindThePrefix) {
    // The prefix is a temporary that is gone when the guard closes.
    const auto object = [](auto& s) { const ScopedJSONObject guard(s, std::string("p: ")); };
    const auto array = [](auto& s) { const ScopedJSONArray guard(s, std::string("p: ")); };
    EXPECT_EQ(json_of(object, 0), "p: Could not open object");
    EXPECT_EQ(json_of(object, 1), "p: Could not close object");
    EXPECT_EQ(json_of(array, 0), "p: Could not open array");
    EXPECT_EQ(json_of(array, 1), "p: Could not close array");
}

TEST(ScopedJSON, ClosesInSilenceWhileAnotherExceptionIsOnItsWay) {
    const auto unwound = [](auto& s) {
        const ScopedJSONArray guard(s, "p: ");
        throw SerializationException("other");
    };
    EXPECT_EQ(json_of(unwound, 1), "other");
    EXPECT_EQ(json_of([&](auto& s) { EXPECT_ANY_THROW(unwound(s)); }), "[]");
}

TEST(WrapInYAJL, WrapsWhatTheFunctionWritesAndTellsWhichStepFailed) {
    const auto nothing = [] {};
    const auto members = [&](YAJLStream& s) {
        wrap_in_yajl_object(s, [&] {
            wrap_in_yajl_object(s, "\"", nothing);
            wrap_in_yajl_array(s, "a", [&] { wrap_in_yajl_array(s, nothing); });
        });
    };
    const std::string wrapping = "Wrapping function call in ";
    EXPECT_EQ(json_of(members, 0), wrapping + "object failed: Could not open object");
    EXPECT_EQ(json_of(members, 3),
              wrapping + "object \"\\\"\" failed: Failed to write wrapper object name");
    EXPECT_EQ(json_of(members, 7), wrapping + "object \"\\\"\" failed: Could not close object");
    EXPECT_EQ(json_of(members, 10),
              wrapping + "array \"a\" failed: Failed to write wrapper array name");
    EXPECT_EQ(json_of(members, 14), wrapping + "array failed: Could not open array");
    EXPECT_EQ(json_of(members, 16), wrapping + "array \"a\" failed: Could not close array");
    EXPECT_EQ(json_of(members), "{\"\\\"\":{},\"a\":[[]]}");
}

}  // namespace nuv::test
