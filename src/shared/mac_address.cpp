// SPDX-License-Identifier: Apache-2.0
#include "nuv/mac_address.hpp"

#include <algorithm>
#include <istream>
#include <ostream>

#include "internal/masked_exceptions.hpp"
#include "internal/no_valid_text.hpp"
#include "internal/octet_text.hpp"
#include "nuv/json_serializable_type.hpp"
#include "nuv_platform/ifwatch.h"

namespace nuv {

MACAddress::MACAddress(TextArgument text) {
    if (!parse_string(text)) {
        impl::throw_no_valid_text<impl::InvalidMACText>(text, "MACAddress");
    }
}

bool MACAddress::parse_string(TextArgument text) noexcept {
    return impl::parse_octet_text(text, octets_);
}

std::string MACAddress::to_string() const {
    return std::string(impl::OctetText<MAC_ADDR_LEN>(octets_).view());
}

std::ostream& operator<<(std::ostream& os, const MACAddress& address) {
    const impl::OctetText<MACAddress::MAC_ADDR_LEN> text(address.octets());
    return os.write(text.view().data(), MACAddress::MAC_ADDR_STRING_LEN);
}

std::istream& operator>>(std::istream& is, MACAddress& address) {
    struct WidthRestorer {
        std::istream& is;
        std::streamsize width;
        ~WidthRestorer() { is.width(width); }
    } const restorer{is, is.width(MACAddress::MAC_ADDR_STRING_LEN)};

    std::string word;
    {
        const impl::MaskedExceptions masked(is);  // the state is not final yet
        is >> word;
    }
    MACAddress read;
    if (is.good() && read.parse_string(word)) {
        address = read;
    } else {
        is.clear(std::ios::failbit);
    }
    return is;
}

bool is_valid_mac_address(const MACAddress& address) noexcept {
    // The second one is an address that powerline chips answer to before they have one of their
    // own.
    constexpr std::array INVALID{
        MACAddress(), MACAddress(MACAddress::Octets{0x00, 0xB0, 0x52, 0x00, 0x00, 0x01})};
    return std::find(INVALID.begin(), INVALID.end(), address) == INVALID.end();
}

bool is_valid_individual_mac_address(const MACAddress& address) noexcept {
    return is_valid_mac_address(address) && !address.is_group();
}

MACAddress get_mac_for_ifname(const InterfaceName& ifname) noexcept {
    std::array<char, InterfaceName::capacity() + 1> name{};
    std::copy(ifname.begin(), ifname.end(), name.begin());
    MACAddress::Octets octets{};
    return if_get_hwaddr(name.data(), octets.data()) < 0 ? MACAddress() : MACAddress(octets);
}

}  // namespace nuv

namespace nuv::serialization {

void JSONSerializableType<MACAddress>::serialize(YAJLStream& stream, SerializationContext&,
                                                 const MACAddress& value) {
    if (!stream.write_string(impl::OctetText<MACAddress::MAC_ADDR_LEN>(value.octets()).view())) {
        impl::throw_json_write_failed("MACAddress");
    }
}

void JSONSerializableType<MACAddress>::deserialize(YAJLNode& node, SerializationContext&,
                                                   const std::string& key, MACAddress& value) {
    std::string text;
    if (!node.get_string(key, text)) {
        impl::throw_json_text_unknown("MACAddress", key, text);
    }
    value = MACAddress(text);
}

}  // namespace nuv::serialization
