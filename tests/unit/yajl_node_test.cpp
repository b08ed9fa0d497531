// SPDX-License-Identifier: Apache-2.0
#include "nuv/yajl_node.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "support/json_text.hpp"

using nuv::serialization::YAJLNode;
using nuv::test::message_of;
using nuv::test::parse;

TEST(YAJLNode, RefusesWhatIsNoJson) {
    const std::string opening = "Parsing of JSON failed, can't create root YAJLNode, got:\n";
    for (const char* text : {"", "{", "nonsense", "[1,]", "1 2"}) {
        const std::string message = message_of([&] { parse(text); });
        EXPECT_TRUE(message.starts_with(opening)) << message;
        EXPECT_GT(message.size(), opening.size());
    }
    std::istringstream failed("{}");
    failed.setstate(std::ios::failbit);
    EXPECT_NE(message_of([&] { YAJLNode{failed}; }), "");
}

TEST(YAJLNode, ReadsTheStreamToItsEndAlsoBehindANul) {
    std::istringstream is(std::string("7\0\xFF rest", 8));
    std::uint8_t value = 0;
    EXPECT_TRUE(YAJLNode(is).get_integer("", value));
    EXPECT_EQ(value, 7);
    EXPECT_EQ(is.rdstate(), std::ios::eofbit);
}

TEST(YAJLNode, GettersTakeTheirTypeAloneAndElseLeaveTheOutput) {
    struct {
        const char* value;
        const char* fitting;  // which of null, bool, integer, string, array, object
    } const rows[] = {{"null", "n"}, {"true", "b"},  {"false", "b"}, {"5", "i"},
                      {"1.5", ""},   {"\"s\"", "s"}, {"[1]", "a"},   {"{\"x\":1}", "o"}};
    for (const auto& row : rows) {
        const YAJLNode self = parse(row.value);
        const YAJLNode holder = parse("{\"k\":" + std::string(row.value) + "}");
        const YAJLNode empty;
        const auto check = [&](const YAJLNode& node, const std::string& key,
                               const std::string& fitting) {
            const auto fits = [&](char type) { return fitting.find(type) != std::string::npos; };
            bool truth = row.value != std::string("true");
            int number = 77;
            std::string text = "before";
            YAJLNode out = parse("\"before\"");
            EXPECT_EQ(node.get_null(key), fits('n'));
            EXPECT_EQ(node.get_bool(key, truth), fits('b'));
            EXPECT_EQ(truth == (row.value == std::string("true")), fits('b'));
            EXPECT_EQ(node.get_integer(key, number), fits('i'));
            EXPECT_EQ(number, fits('i') ? 5 : 77);
            EXPECT_EQ(node.get_string(key, text), fits('s'));
            EXPECT_EQ(text, fits('s') ? "s" : "before");
            EXPECT_EQ(node.get_array(key, out), fits('a'));
            // An empty key is the node itself for all but objects: there it is a name.
            EXPECT_EQ(node.get_object(key, out), fits('o') && !key.empty());
            EXPECT_EQ(out.get_string("", text), !fits('a') && (!fits('o') || key.empty()));
        };
        SCOPED_TRACE(row.value);
        check(self, "", row.fitting);
        check(holder, "k", row.fitting);
        check(holder, "other", "");
        check(empty, "", "");
        check(empty, "k", "");
    }
}

TEST(YAJLNode, IntegersAreWhatFitsSigned64Bits) {
    struct {
        const char* text;
        bool is_integer;
        std::int64_t value;
    } const rows[] = {
        {"-0", true, 0},
        {"9223372036854775807", true, std::numeric_limits<std::int64_t>::max()},
        {"-9223372036854775808", true, std::numeric_limits<std::int64_t>::min()},
        {"9223372036854775808", false, 3},
        {"-9223372036854775809", false, 3},
        {"18446744073709551615", false, 3},
        {"1.5", false, 3},
        {"1.0", false, 3},
        {"1e3", false, 3},
    };
    for (const auto& row : rows) {
        std::int64_t value = 3;
        EXPECT_EQ(parse(row.text).get_integer("", value), row.is_integer) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
    }
}

TEST(YAJLNode, CutsIntegersToTheLowBits) {
    const YAJLNode node = parse("[-1]");
    YAJLNode element;
    ASSERT_TRUE(node.get_array_element(0, element));
    std::uint32_t u32 = 0;
    unsigned long long u64 = 0;
    long s = 0;
    EXPECT_TRUE(element.get_integer("", u32) && element.get_integer("", u64) &&
                element.get_integer("", s));
    EXPECT_EQ(u32, 0xFFFFFFFFU);
    EXPECT_EQ(u64, 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(s, -1);
}

TEST(YAJLNode, FindsMembersByNameTheFirstOfSeveral) {
    const YAJLNode node = parse("{\"a\":1,\"b\":null,\"\":{\"c\":3},\"a\":2}");
    int value = 0;
    EXPECT_TRUE(node.get_integer("a", value));
    EXPECT_EQ(value, 1);
    EXPECT_TRUE(node.probe_name("b"));
    EXPECT_FALSE(node.probe_name("c"));
    EXPECT_FALSE(parse("[1]").probe_name("a"));
    YAJLNode out;
    EXPECT_TRUE(node.get_object("", out));
    EXPECT_TRUE(out.get_integer("c", value));
}

TEST(YAJLNode, WalksAnArrayToItsSize) {
    const YAJLNode array = parse("[10,20]");
    const YAJLNode object = parse("{}");
    YAJLNode element;
    std::uint32_t size = 9;
    EXPECT_FALSE(object.get_array_size(size) || object.get_array_element(0, element));
    EXPECT_EQ(size, 9U);
    EXPECT_TRUE(array.get_array_size(size));
    EXPECT_EQ(size, 2U);
    EXPECT_TRUE(array.get_array_element(1, element));
    EXPECT_FALSE(array.get_array_element(2, element));
    int value = 0;
    EXPECT_TRUE(element.get_integer("", value));
    EXPECT_EQ(value, 20);
}

TEST(YAJLNode, BorrowedNodesStayValidWhileTheTreeMovesToAnotherOwner) {
    YAJLNode root = parse("{\"a\":{\"b\":[\"text\"]}}");
    YAJLNode cursor;
    ASSERT_TRUE(root.get_object("a", cursor));
    const YAJLNode owner = std::move(root);
    ASSERT_TRUE(cursor.get_array("b", cursor));
    ASSERT_TRUE(cursor.get_array_element(0, cursor));
    YAJLNode reused = parse("[1]");
    reused = std::move(cursor);
    std::string text;
    EXPECT_TRUE(reused.get_string("", text));
    EXPECT_EQ(text, "text");
    EXPECT_FALSE(root.probe_name("a"));  // NOLINT(bugprone-use-after-move): empty by contract
}
