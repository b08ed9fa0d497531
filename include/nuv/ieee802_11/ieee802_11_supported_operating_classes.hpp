// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Supported Operating Classes (ID 59; IEEE Std 802.11-2020, 9.4.2.53): the current class, the
/// classes that the station is capable of, and two optional lists behind delimiters in the body:
/// 130 opens the extension list, 0 the list of duples.
///
/// Class 130 itself therefore ends the capable list (deliberate: peers read it so); a further 130
/// inside the extension list is data. A delimiter that a caller puts into a
/// list is written and read back as one. A body over 255 octets is refused on writing with "Invalid
/// length"; duples that are no non-empty whole number of pairs are refused on reading with "Invalid
/// length: must fit IEEE802_11_DupleOperatingClass".
class NUV_EXPORT IEEE802_11_SupportedOperatingClasses
    : public IEEE802_11_Element<IEEE802_11_Element_ID::SUPPORTED_OPERATING_CLASSES> {
public:
    using Classes = SmallVector<std::uint8_t, 24>;
    using Duples = SmallVector<std::uint16_t, 4>;

    IEEE802_11_SupportedOperatingClasses() = default;
    IEEE802_11_SupportedOperatingClasses(std::uint8_t current_opclass, const Classes& capable)
        : current_opclass_(current_opclass), capable_opclasses_(capable) {}

    std::uint8_t get_current_opclass() const { return current_opclass_; }
    void set_current_opclass(std::uint8_t opclass) { current_opclass_ = opclass; }
    const Classes& get_capable_opclasses() const { return capable_opclasses_; }
    void set_capable_opclasses(const Classes& opclasses) { capable_opclasses_ = opclasses; }
    const Classes& get_extension_vector() const { return extension_vector_; }
    void set_extension_vector(const Classes& opclasses) { extension_vector_ = opclasses; }
    /// Two operating classes each, the first one in the high octet.
    const Duples& get_duple_opclasses() const { return duple_opclasses_; }
    void set_duple_opclasses(const Duples& opclasses) { duple_opclasses_ = opclasses; }

    std::uint32_t get_length() const override;
    void visit_fields(IEEE802_11_FieldVisitor& visitor) const override;
    void assign_fields(IEEE802_11_FieldSource& source) override;

protected:
    void write_body(std::ostream& os, serialization::SerializationContext& ctx) const override;
    void read_body(impl::ByteCursor& body, serialization::SerializationContext& ctx) override;
    bool equal_fields(const IEEE802_11_Element_Base& other) const override;

private:
    std::uint8_t current_opclass_ = 0;
    Classes capable_opclasses_;
    Classes extension_vector_;
    Duples duple_opclasses_;
};

}  // namespace nuv::ieee802_11
