// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_extendend_capabilities.hpp"

#include "internal/ieee802_11/element_layout.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;

std::uint8_t IEEE802_11_ExtendendCapabilities::bytes_to_send() const {
    if (!extra_bytes_.empty()) {
        return static_cast<std::uint8_t>(NUMBER_OF_KNOWN_BYTES + extra_bytes_.size());
    }
    std::size_t bits = capabilities_.size();
    while (bits > 0 && !capabilities_[bits - 1]) {
        --bits;
    }
    return static_cast<std::uint8_t>((bits + 7) / 8);
}

std::uint32_t IEEE802_11_ExtendendCapabilities::get_length() const {
    return HEADER_LENGTH + bytes_to_send();
}

void IEEE802_11_ExtendendCapabilities::check_fields() const {
    if (NUMBER_OF_KNOWN_BYTES + extra_bytes_.size() > 255) {
        throw serialization::SerializationException("Invalid length");
    }
}

// Body, IEEE Std 802.11-2020, 9.4.2.26: the octets of the field, as many as are needed or wanted.
void IEEE802_11_ExtendendCapabilities::write_body(std::ostream& os,
                                                  SerializationContext& ctx) const {
    using Wire = impl::WireForm<Capabilities>;
    std::array<std::uint8_t, Wire::size> octets{};
    Wire::encode(capabilities_, octets.data());
    impl::write_octets(os, octets.data(), std::min<std::size_t>(bytes_to_send(), octets.size()),
                       Wire::texts.serialize);
    serialization::BinarySerializableType<ExtraBytes>::serialize(os, ctx, extra_bytes_);
}

void IEEE802_11_ExtendendCapabilities::read_body(impl::ByteCursor& body,
                                                 SerializationContext& /*ctx*/) {
    using Wire = impl::WireForm<Capabilities>;
    capabilities_.reset();
    extra_bytes_.clear();
    SmallVector<std::uint8_t, NUMBER_OF_KNOWN_BYTES> known;
    layout::read_list(body, std::min<std::size_t>(body.remaining(), Wire::size), known);
    Wire::decode(known.data(), known.size(), capabilities_);
    layout::read_list(body, body.remaining(), extra_bytes_);
}

bool IEEE802_11_ExtendendCapabilities::equal_fields(const IEEE802_11_Element_Base& other) const {
    const auto& o = static_cast<const IEEE802_11_ExtendendCapabilities&>(other);
    return capabilities_ == o.capabilities_ && extra_bytes_ == o.extra_bytes_;
}

void IEEE802_11_ExtendendCapabilities::visit_fields(IEEE802_11_FieldVisitor& visitor) const {
    layout::visit_value(visitor, "capabilities", capabilities_);
    layout::visit_list(visitor, "extra_bytes", extra_bytes_);
}

void IEEE802_11_ExtendendCapabilities::assign_fields(IEEE802_11_FieldSource& source) {
    layout::assign_value(source, "capabilities", capabilities_);
    layout::assign_list(source, "extra_bytes", extra_bytes_);
}

}  // namespace nuv::ieee802_11
