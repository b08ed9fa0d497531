// SPDX-License-Identifier: Apache-2.0
#include "nuv/yajl_node.hpp"

#include <yajl/yajl_tree.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <istream>
#include <limits>

#include "internal/masked_exceptions.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::serialization {

namespace {

yajl_val member(yajl_val node, const std::string& key, yajl_type type) {
    std::array<const char*, 2> path{key.c_str(), nullptr};
    return yajl_tree_get(node, path.data(), type);
}

/// The node itself is what a path without any step leads to; "" would be a member's name.
yajl_val member_or_self(yajl_val node, const std::string& key, yajl_type type) {
    if (!key.empty()) {
        return member(node, key, type);
    }
    const char* no_step = nullptr;
    return yajl_tree_get(node, &no_step, type);
}

[[noreturn]] void refuse(const char* reason) {
    throw SerializationException(
        std::string("Parsing of JSON failed, can't create root YAJLNode, got:\n") + reason);
}

std::string read_document(std::istream& is) {
    std::string text;
    const impl::MaskedExceptions masked(is);  // what is wrong with the text is said in one way
    std::getline(is, text, '\0');             // the parser takes a C string
    if (is.good()) {
        is.ignore(std::numeric_limits<std::streamsize>::max());
    }
    if (is.bad()) {
        refuse("reading the stream failed");  // what came may be a document, and another one
    }
    return text;
}

/// Whether lists and objects lie in each other deeper than a tree of them can be freed on a small
/// stack: the parser recurses there.
bool is_too_deep(std::string_view text) {
    if (std::count_if(text.begin(), text.end(), [](char c) { return c == '[' || c == '{'; }) <=
        std::ptrdiff_t{YAJLNode::MAX_DEPTH}) {
        return false;  // most documents, at a fraction of the cost
    }
    unsigned depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        switch (text[at]) {
            case '[':
            case '{':
                if (++depth > YAJLNode::MAX_DEPTH) {
                    return true;
                }
                break;
            case ']':
            case '}':
                depth -= depth > 0 ? 1 : 0;
                break;
            case '"':
                for (++at; at < text.size() && text[at] != '"'; ++at) {
                    at += text[at] == '\\' ? 1 : 0;
                }
                break;
            case '/':  // the parser passes over comments, quotes inside them included
                if (text.substr(at).starts_with("//")) {
                    at = std::min(text.find('\n', at), text.size());
                } else if (text.substr(at).starts_with("/*")) {
                    const std::size_t end = text.find("*/", at + 2);
                    at = end == std::string_view::npos ? text.size() : end + 1;
                }
                break;
            default:
                break;
        }
    }
    return false;
}

}  // namespace

void YAJLNode::FreeOwned::operator()(yajl_val_s* tree) const noexcept {
    if (owns_tree) {
        yajl_tree_free(tree);
    }
}

YAJLNode::YAJLNode(std::istream& is) {
    std::array<char, 1024> error{};
    const std::string text = read_document(is);
    if (is_too_deep(text)) {
        std::snprintf(error.data(), error.size(), "more than %u levels", MAX_DEPTH);
    } else {
        value_ = {yajl_tree_parse(text.c_str(), error.data(), error.size()), FreeOwned{true}};
    }
    if (value_ == nullptr) {
        refuse(error.data());
    }
}

bool YAJLNode::probe_name(const std::string& key) const {
    return member(value_.get(), key, yajl_t_any) != nullptr;
}

bool YAJLNode::borrow(yajl_val_s* value, YAJLNode& out) const {
    if (value == nullptr) {
        return false;
    }
    out.value_ = {value, FreeOwned{false}};
    return true;
}

bool YAJLNode::get_names(std::vector<std::string>& names) const {
    const auto* object = YAJL_GET_OBJECT(value_.get());
    if (object == nullptr) {
        return false;
    }
    names.assign(object->keys, object->keys + object->len);
    return true;
}

bool YAJLNode::get_object(const std::string& key, YAJLNode& out) const {
    return borrow(member(value_.get(), key, yajl_t_object), out);
}

bool YAJLNode::get_array(const std::string& key, YAJLNode& out) const {
    return borrow(member_or_self(value_.get(), key, yajl_t_array), out);
}

bool YAJLNode::get_array_size(std::uint32_t& size) const {
    const auto* array = YAJL_GET_ARRAY(value_.get());
    if (array == nullptr) {
        return false;
    }
    size = static_cast<std::uint32_t>(array->len);
    return true;
}

bool YAJLNode::get_array_element(std::uint32_t index, YAJLNode& out) const {
    const auto* array = YAJL_GET_ARRAY(value_.get());
    return array != nullptr && index < array->len && borrow(array->values[index], out);
}

bool YAJLNode::get_bool(const std::string& key, bool& out) const {
    const yajl_val value = member_or_self(value_.get(), key, yajl_t_any);
    if (!YAJL_IS_TRUE(value) && !YAJL_IS_FALSE(value)) {
        return false;
    }
    out = YAJL_IS_TRUE(value);
    return true;
}

bool YAJLNode::get_null(const std::string& key) const {
    return member_or_self(value_.get(), key, yajl_t_null) != nullptr;
}

bool YAJLNode::get_int64(const std::string& key, std::int64_t& out) const {
    const yajl_val value = member_or_self(value_.get(), key, yajl_t_number);
    // The parser reads the smallest integer right, but calls it out of range.
    if (!YAJL_IS_INTEGER(value) &&
        (value == nullptr || std::strcmp(YAJL_GET_NUMBER(value), "-9223372036854775808") != 0)) {
        return false;
    }
    out = YAJL_GET_INTEGER(value);
    return true;
}

bool YAJLNode::get_string(const std::string& key, std::string& out) const {
    const yajl_val value = member_or_self(value_.get(), key, yajl_t_string);
    if (value == nullptr) {
        return false;
    }
    out = YAJL_GET_STRING(value);
    return true;
}

}  // namespace nuv::serialization
