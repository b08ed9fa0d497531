// SPDX-License-Identifier: Apache-2.0
// The first octet is the length of a member's name (modulo 8), which follows; the rest is the
// document.
#include <array>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>

#include "fuzz/invariant.hpp"
#include "nuv/json_serializable_type.hpp"
#include "nuv/mac_address.hpp"

namespace {

using nuv::fuzz::require;
using nuv::serialization::JSONSerializableType;
using nuv::serialization::SerializationContext;
using nuv::serialization::SerializationException;
using nuv::serialization::YAJLNode;
using nuv::serialization::YAJLStream;

/// What the codec of T makes of the member `key`; nothing if it refuses, and then without a trace.
template <class T>
std::optional<T> decoded(YAJLNode& node, const std::string& key, const T& before) {
    SerializationContext ctx;
    T value = before;
    try {
        JSONSerializableType<T>::deserialize(node, ctx, key, value);
        return value;
    } catch (const SerializationException&) {
    } catch (const std::invalid_argument&) {
        require((std::is_same_v<T, nuv::MACAddress>),
                "only a MAC address has an exception of its own");
    }
    require(value == before, "a failed read changed its target");
    return {};
}

/// Writes `value` and reads it again.
template <class T>
void require_round_trip(const T& value) {
    SerializationContext ctx;
    std::stringstream text;
    YAJLStream stream(text, YAJLStream::YAJLIndentation::COMPACT);
    JSONSerializableType<T>::serialize(stream, ctx, value);
    YAJLNode node(text);
    require(decoded<T>(node, "", {}) == value, "another value than was written");
}

class Walk {
public:
    explicit Walk(std::string name) : names_{"", "a", std::move(name)} {}

    void visit(YAJLNode& node) {
        if (++visited_ > 64) {
            return;
        }
        for (const std::string& name : names_) {
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
        const auto text = decoded<std::string>(node, name, "before");
        const bool is_object = !name.empty() && node.get_object(name, object);
        const bool is_array = node.get_array(name, array);
        const int kinds = int{integer.has_value()} + int{text.has_value()} + int{is_object} +
                          int{is_array} + int{decoded<bool>(node, name, true).has_value()} +
                          int{node.get_null(name)};
        require(kinds <= 1, "a value of several kinds");
        require(name.empty() || kinds == 0 || node.probe_name(name), "a member without a name");

        require_narrowed<std::uint8_t>(node, name, integer);
        require_narrowed<std::int16_t>(node, name, integer);
        require_narrowed<std::uint32_t>(node, name, integer);
        require_narrowed<std::uint64_t>(node, name, integer);
        if (integer) {
            require_round_trip(*integer);
        }
        if (text) {
            require_round_trip(*text);
            if (const auto address = decoded<nuv::MACAddress>(node, name, {})) {
                require_round_trip(*address);
            }
        }
        if (is_object) {
            visit(object);
        }
        if (is_array && !name.empty()) {
            visit(array);
        }
    }

    template <class T>
    static void require_narrowed(YAJLNode& node, const std::string& name,
                                 const std::optional<std::int64_t>& integer) {
        const auto narrow = decoded<T>(node, name, 77);
        require(narrow.has_value() == integer.has_value() &&
                    (!narrow || *narrow == static_cast<T>(*integer)),
                "not the low bits");
    }

    std::array<std::string, 3> names_;
    int visited_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string input(data + 1, data + size);
    const std::size_t name_length = std::min<std::size_t>(data[0] % 8, input.size());
    const std::string name = input.substr(0, name_length);
    std::istringstream document(input.substr(name_length));
    std::optional<YAJLNode> root;
    try {
        root.emplace(document);
    } catch (const SerializationException& e) {
        require(std::string_view(e.what()).starts_with(
                    "Parsing of JSON failed, can't create root YAJLNode, got:\n"),
                e.what());
        return 0;
    }
    Walk(name).visit(*root);
    return 0;
}
