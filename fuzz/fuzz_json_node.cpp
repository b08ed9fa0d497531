// SPDX-License-Identifier: Apache-2.0
// The first octet is the length of a member's name (modulo 8), which follows; the rest is the
// document.
#include "fuzz/invariant.hpp"
#include "nuv/mac_address.hpp"
#include "tests/support/json_text.hpp"

namespace {

using nuv::fuzz::require;
using nuv::test::YAJLNode;

/// What the codec of T makes of the member `key`; nothing if it refuses, and then without a trace.
/// What is read is written and read again.
template <class T>
std::optional<T> decoded(YAJLNode& node, const std::string& key, const T& before) {
    nuv::test::SerializationContext ctx;
    T value = before;
    try {
        nuv::test::JSONSerializableType<T>::deserialize(node, ctx, key, value);
        T again = before;
        require(nuv::test::from_json(nuv::test::to_json(value), "", again).empty(),
                "not read back");
        require(again == value, "another value than was written");
        return value;
    } catch (const nuv::test::SerializationException&) {
    } catch (const std::invalid_argument&) {
        require((std::is_same_v<T, nuv::MACAddress>),
                "only a MAC address has an exception of its own");
    }
    require(value == before, "a failed read changed its target");
    return {};
}

class Walk {
public:
    explicit Walk(std::string name) : name_(std::move(name)) {}

    void visit(YAJLNode& node) {
        if (++visited_ > 64) {
            return;
        }
        for (const std::string& name : {std::string(), std::string("a"), name_}) {
            visit_member(node, name);
        }
        std::uint32_t size = 0;
        YAJLNode element;
        if (node.get_array_size(size)) {
            require(!node.get_array_element(size, element), "an element behind the last");
            for (std::uint32_t i = 0; i < size && visited_ <= 64; ++i) {
                require(node.get_array_element(i, element), "an element is missing");
                visit(element);
            }
        }
    }

private:
    void visit_member(YAJLNode& node, const std::string& name) {
        YAJLNode object;
        YAJLNode array;
        const auto integer = decoded<std::int64_t>(node, name, -77);
        const bool is_text = decoded<std::string>(node, name, "before").has_value();
        const bool is_object = !name.empty() && node.get_object(name, object);
        const bool is_array = node.get_array(name, array);
        const int kinds = int{integer.has_value()} + int{is_text} + int{is_object} + int{is_array} +
                          int{decoded<bool>(node, name, true).has_value()} +
                          int{node.get_null(name)};
        require(kinds <= 1, "a value of several kinds");
        require(name.empty() || kinds == 0 || node.probe_name(name), "a member without a name");
        require(!decoded<nuv::MACAddress>(node, name, {}) || is_text, "an address and no text");
        require(decoded<std::uint8_t>(node, name, 77).has_value() == integer.has_value(),
                "an integer of one size only");
        if (is_object) {
            visit(object);
        }
        if (is_array && !name.empty()) {
            visit(array);
        }
    }

    std::string name_;
    int visited_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string input(data + 1, data + size);
    const std::size_t name_length = std::min<std::size_t>(data[0] % 8, input.size());
    std::optional<YAJLNode> root;
    const std::string problem =
        nuv::test::message_of([&] { root.emplace(nuv::test::parse(input.substr(name_length))); });
    require(problem.empty() ||
                problem.starts_with("Parsing of JSON failed, can't create root YAJLNode, got:\n"),
            problem);
    if (root) {
        Walk(input.substr(0, name_length)).visit(*root);
    }
    return 0;
}
