// SPDX-License-Identifier: Apache-2.0
#include "nuv/yajl_node.hpp"

#include "tests/support/json_text.hpp"
#include "tests/support/test.hpp"

using nuv::test::parse;
using nuv::test::YAJLNode;

TEST(YAJLNode, RefusesWhatIsNoJson) {
    const std::string opening = "Parsing of JSON failed, can't create root YAJLNode, got:\n";
    for (const char* text : {"", "{", "nonsense", "[1,]", "1 2"}) {
        const std::string message = nuv::test::message_of([&] { parse(text); });
        EXPECT_TRUE(message.starts_with(opening) && message.size() > opening.size()) << message;
    }
}

TEST(YAJLNode, RefusesMoreLevelsThanCanBeFreed) {
    const auto error = [](const std::string& text) {
        return nuv::test::message_of([&] { parse(text); });
    };
    const auto nested = [](std::size_t levels, const std::string& inside) {
        return std::string(levels, '[') + inside + std::string(levels, ']');
    };
    const std::string refusal =
        "Parsing of JSON failed, can't create root YAJLNode, got:\nmore than 127 levels";
    EXPECT_EQ(error(nested(126, R"("[\"[", "[\\", {} /* [" */ // ]"
        )")),
              "");
    for (const char* inside : {"[]", "{}", R"("\\", [])", "1, /* \" */ []", "1, // \"\n []"}) {
        EXPECT_EQ(error(nested(127, inside)), refusal) << inside;
    }
    EXPECT_EQ(error(std::string(1 << 20, '[')), refusal);
}

TEST(YAJLNode, FailsInOneWayWhateverTheStreamThrows) {
    /// A file on a disk that cannot be read any further.
    struct BrokenBuf : std::streambuf {
        explicit BrokenBuf(std::string& text) {
            setg(text.data(), text.data(), text.data() + text.size());
        }
        int_type underflow() override { throw std::runtime_error("no more"); }
    };
    for (const auto mask : {std::ios::goodbit, std::ios::badbit | std::ios::eofbit}) {
        for (std::string text : {std::string("12"), std::string("12\0 ", 4)}) {
            BrokenBuf buffer(text);
            std::istream is(&buffer);
            is.exceptions(mask);
            EXPECT_EQ(nuv::test::message_of([&] { return YAJLNode(is).get_null(""); }),
                      "Parsing of JSON failed, can't create root YAJLNode, got:\n"
                      "reading the stream failed");
            EXPECT_EQ(is.exceptions(), mask);
        }
    }
    std::istringstream is;
    is.exceptions(std::ios::failbit | std::ios::eofbit);
    EXPECT_THROW(YAJLNode{is}, nuv::test::SerializationException);
    EXPECT_EQ(is.exceptions(), std::ios::failbit | std::ios::eofbit);
}

TEST(YAJLNode, ReadsTheStreamToItsEndAlsoBehindANul) {
    std::istringstream is(std::string("null\0\xFF rest", 11));
    EXPECT_TRUE(YAJLNode(is).get_null("") && is.rdstate() == std::ios::eofbit);
    EXPECT_THROW(YAJLNode{is}, nuv::test::SerializationException);
}

TEST(YAJLNode, GettersTakeTheirTypeAloneAndElseLeaveTheOutput) {
    const auto check = [](const YAJLNode& node, const std::string& key, char type) {
        bool truth = false;
        int number = 77;
        std::string text = "before";
        YAJLNode out = parse("\"before\"");
        EXPECT_EQ(node.get_null(key), type == 'n');
        EXPECT_TRUE(node.get_bool(key, truth) == truth && truth == (type == 't'));
        EXPECT_EQ(node.get_integer(key, number), type == '5');
        EXPECT_EQ(number, type == '5' ? 5 : 77);
        EXPECT_EQ(node.get_string(key, text), type == '"');
        EXPECT_EQ(text, type == '"' ? "s" : "before");
        EXPECT_EQ(node.get_array(key, out), type == '[');
        // An empty key is a name where an object is looked for.
        EXPECT_EQ(node.get_object(key, out), type == '{' && !key.empty());
        EXPECT_EQ(out.get_string("", text), type != '[' && (type != '{' || key.empty()));
    };
    for (const std::string value : {"null", "true", "5", "\"s\"", "[1]", "{\"x\":1}"}) {
        SCOPED_TRACE(value);
        check(parse(value), "", value[0]);
        check(parse("{\"k\":" + value + ",\"k\":1}"), "k", value[0]);  // the first one counts
        check(parse("{\"k\":" + value + "}"), "other", '-');
    }
    check(YAJLNode(), "", '-');
}

TEST(YAJLNode, BorrowedNodesWalkATreeThatMovesToAnotherOwner) {
    YAJLNode root = parse("{\"\":{\"b\":[1,\"text\"]}}"), cursor;
    std::uint32_t size = 9;
    std::string text;
    ASSERT_TRUE(root.get_object("", cursor));
    YAJLNode owner = parse("[]");
    owner = std::move(root);
    EXPECT_TRUE(cursor.probe_name("b") && !cursor.probe_name("a"));
    std::vector<std::string> names;
    EXPECT_TRUE(cursor.get_names(names) && names == std::vector<std::string>{"b"});
    EXPECT_FALSE(YAJLNode().get_names(names) || parse("[1]").get_names(names) || names.size() != 1);
    EXPECT_FALSE(cursor.get_array_size(size) || cursor.get_array_element(0, cursor) || size != 9);
    EXPECT_TRUE(cursor.get_array("b", cursor) && cursor.get_array_size(size) && size == 2);
    EXPECT_FALSE(cursor.get_array_element(2, cursor));
    EXPECT_TRUE(cursor.get_array_element(1, cursor) && cursor.get_string("", text));
    EXPECT_EQ(text, "text");
}
