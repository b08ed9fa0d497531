// SPDX-License-Identifier: Apache-2.0
// The first octet chooses what is read (modulo 3): a channel entry, info or list. The rest is the
// document.
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>

#include "fuzz/invariant.hpp"
#include "nuv/channels.hpp"
#include "nuv/json_serializable_type.hpp"

namespace {

using nuv::fuzz::require;
using nuv::serialization::JSONSerializableType;
using nuv::serialization::SerializationContext;
using nuv::serialization::SerializationException;
using nuv::serialization::YAJLNode;
using nuv::serialization::YAJLStream;

template <class T>
std::optional<T> read(const std::string& text) {
    std::istringstream is(text);
    SerializationContext ctx;
    T value;
    try {
        YAJLNode node(is);
        JSONSerializableType<T>::deserialize(node, ctx, "", value);
        return value;
    } catch (const SerializationException&) {
        require(value == T(), "a failed read changed its target");
        return {};
    }
}

template <class T>
std::string write(const T& value) {
    std::ostringstream os;
    SerializationContext ctx;
    YAJLStream stream(os, YAJLStream::YAJLIndentation::COMPACT);
    JSONSerializableType<T>::serialize(stream, ctx, value);
    return std::move(os).str();
}

template <class T>
void check(const std::string& document) {
    const auto value = read<T>(document);
    if (!value) {
        return;
    }
    std::string text = write(*value);
    if constexpr (std::is_same_v<T, nuv::ChannelList>) {
        require(read<T>(text)->get_channels().empty(), "a list came back by itself");
        text.replace(text.find("channels"), 8, "channles");
    }
    const auto again = read<T>(text);
    require(again && again->equivalent_to(*value), "another value than was written");

    T updated;
    const bool can = updated.can_update_from(*value);
    updated.update(*value);
    require(can == !(updated == T()), "it does not do what it says");
    require(updated.equivalent_to(*value), "a report on nothing is not taken whole");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string document(data + 1, data + size);
    switch (data[0] % 3) {
        case 0:
            check<nuv::ChannelEntry>(document);
            break;
        case 1:
            check<nuv::ChannelInfo>(document);
            break;
        default:
            check<nuv::ChannelList>(document);
            break;
    }
    return 0;
}
