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
    EXPECT_EQ(refusals(object), "p: Could not open object|p: Could not close object");
    EXPECT_EQ(refusals(array), "p: Could not open array|p: Could not close array");
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
    const std::string object = "Wrapping function call in object";
    const std::string array = "Wrapping function call in array";
    const std::string inner = object + R"( "\"" failed: )";
    EXPECT_EQ(refusals(members), object + " failed: Could not open object|" + inner +
                                     "Failed to write wrapper object name|" + inner +
                                     "Could not open object|" + inner + "Could not close object|" +
                                     array + " \"a\" failed: Failed to write wrapper array name|" +
                                     array + " \"a\" failed: Could not open array|" + array +
                                     " failed: Could not open array|" + array +
                                     " failed: Could not close array|" + array +
                                     " \"a\" failed: Could not close array|" + object +
                                     " failed: Could not close object");
    EXPECT_EQ(json_of(members), "{\"\\\"\":{},\"a\":[[]]}");
}

}  // namespace nuv::test
