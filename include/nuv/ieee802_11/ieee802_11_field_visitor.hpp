// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "nuv/export.hpp"

namespace nuv::ieee802_11 {

/// Is shown the fields of an element, in wire order, under their names: the way from a typed
/// element to a text, JSON or a table without knowing its class. Inside a list the names are empty;
/// an object groups named fields. Behind a code, such as "phy_type", stands its text, "phy_type_name",
/// behind the ID of a nested element or subelement its "name", where there is one.
class NUV_EXPORT IEEE802_11_FieldVisitor {
public:
    virtual ~IEEE802_11_FieldVisitor() = default;

    /// A number as the air means it: where the library keeps a field most significant octet first
    /// and the standard does not, this is the standard's value. A negative one is given in two's
    /// complement of 64 bits.
    virtual void number(std::string_view name, std::uint64_t value) = 0;
    virtual void text(std::string_view name, std::string_view value) = 0;
    /// Bit sets and octets without further meaning, in wire order.
    virtual void octets(std::string_view name, std::span<const std::uint8_t> value) = 0;
    virtual void open_list(std::string_view name) = 0;
    virtual void close_list() = 0;
    virtual void open_object(std::string_view name) = 0;
    virtual void close_object() = 0;

protected:
    IEEE802_11_FieldVisitor() = default;
    IEEE802_11_FieldVisitor(const IEEE802_11_FieldVisitor&) = default;
    IEEE802_11_FieldVisitor& operator=(const IEEE802_11_FieldVisitor&) = default;
};

}  // namespace nuv::ieee802_11
