// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstddef>

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Extended Capabilities (ID 127; IEEE Std 802.11-2020, 9.4.2.26), of any length: the first ten
/// octets as a bit set, what comes behind them uninterpreted. The class name's spelling is what its
/// users know it by.
///
/// Zero octets at the end are not written (deliberate: the standard lets a shorter field stand for
/// them), unless extra octets follow. More than 245 extra octets are refused on writing with
/// "Invalid length".
class NUV_EXPORT IEEE802_11_ExtendendCapabilities
    : public IEEE802_11_Element<IEEE802_11_Element_ID::EXTENDED_CAPABILITIES> {
public:
    static constexpr std::size_t NUMBER_OF_KNOWN_BYTES = 10;
    using Capabilities = std::bitset<8 * NUMBER_OF_KNOWN_BYTES>;
    using ExtraBytes = SmallVector<std::uint8_t, 8>;

    /// Bit numbers are those of the standard's field.
    const Capabilities& get_capabilities() const { return capabilities_; }
    void set_capabilities(const Capabilities& capabilities) { capabilities_ = capabilities; }
    const ExtraBytes& get_extra_bytes() const { return extra_bytes_; }
    void set_extra_bytes(const ExtraBytes& extra_bytes) { extra_bytes_ = extra_bytes; }

    /// Octets of the body as it is written. Deliberate: kept in 8 bits, so that 246 extra octets,
    /// which are refused on writing, give a get_length() of 2.
    std::uint8_t bytes_to_send() const;

    std::uint32_t get_length() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;
    void check_fields() const override;

protected:
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    Capabilities capabilities_;
    ExtraBytes extra_bytes_;
};

}  // namespace nuv::ieee802_11
