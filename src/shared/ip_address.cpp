// SPDX-License-Identifier: Apache-2.0
#include "nuv/ip_address.hpp"

#include <ostream>
#include <stdexcept>

#include "internal/enum_table.hpp"
#include "internal/quote.hpp"
#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "nuv/json_serializer.hpp"

namespace nuv {
namespace impl {

template <>
struct EnumTexts<IPAddress::Version> {
    using enum IPAddress::Version;
    static constexpr EnumRow<IPAddress::Version> rows[] = {
        {V4, "V4"},
        {V6, "V6"},
        {OTHERWISE, "New IP address version not handled", RowKind::REFUSED},
    };
};

}  // namespace impl

NUV_DEFINE_ENUM_TEXTS(IPAddress::Version)

std::unique_ptr<IPAddress> IPAddress::guess_version_and_parse(TextArgument text) {
    const auto dots = std::ranges::count(text, '.');
    const auto colons = std::ranges::count(text, ':');
    if (colons == 0 && dots == 3) {
        return std::make_unique<IPv4Address>(text);
    }
    if ((dots == 0 || dots == 3) && colons >= 2 && colons <= 7) {
        return std::make_unique<IPv6Address>(text);
    }
    throw std::invalid_argument("Could not guess IP address version for " + impl::quote(text));
}

bool operator==(const IPAddress& a, const IPAddress& b) {
    return a.get_version() == b.get_version() && a.is_equal(b);
}

std::strong_ordering operator<=>(const IPAddress& a, const IPAddress& b) {
    if (a.get_version() != b.get_version()) {
        return a.get_version() <=> b.get_version();
    }
    if (a.is_equal(b)) {
        return std::strong_ordering::equal;
    }
    return a.is_lt(b) ? std::strong_ordering::less : std::strong_ordering::greater;
}

std::ostream& operator<<(std::ostream& os, const IPAddress& address) {
    return os << address.to_string();
}

std::unique_ptr<IPAddress> create_ip_address(serialization::YAJLNode& node,
                                             serialization::SerializationContext& ctx) {
    IPAddress::Version version{};
    serialization::JSONSerializer::deserialize(node, ctx, "version", version);
    switch (version) {
        case IPAddress::Version::V4:
            return std::make_unique<IPv4Address>();
        case IPAddress::Version::V6:
            return std::make_unique<IPv6Address>();
    }
    throw serialization::SerializationException(
        "Deserialization of IPAddress failed: New IP address version not handled");
}

void serialize_ip_address(serialization::YAJLStream& stream,
                          serialization::SerializationContext& ctx, const IPAddress& address,
                          std::string_view suffix) {
    serialization::JSONSerializer::serialize_impl(stream, ctx, "version", address.get_version(),
                                                  "value", address.to_string().append(suffix));
}

std::unique_ptr<IPAddress> deserialize_ip_address(serialization::YAJLNode& node,
                                                  serialization::SerializationContext& ctx,
                                                  std::string& value) {
    auto address = create_ip_address(node, ctx);
    serialization::JSONSerializer::deserialize(node, ctx, "value", value);
    return address;
}

std::unique_ptr<IPAddress> deserialize_ip_address(serialization::YAJLNode& node,
                                                  serialization::SerializationContext& ctx) {
    std::string value;
    auto address = deserialize_ip_address(node, ctx, value);
    try {
        address->from_string(value);
    } catch (const std::invalid_argument& error) {
        throw serialization::SerializationException(
            std::string("Deserialization of IPAddress failed: ") + error.what());
    }
    return address;
}

}  // namespace nuv
