// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "nuv/export.hpp"

namespace nuv::ieee802_11 {

/// Hands out the fields of an element, under the names and in the forms in which a
/// IEEE802_11_FieldVisitor is shown them: the way from JSON or a form to a typed element without
/// knowing its class. Inside a list the names are empty, and the entries come one by one. The names of
/// codes and nested elements may be missing and do not count.
///
/// Every function throws what fail() throws when there is no such field or it is of another kind.
class NUV_EXPORT IEEE802_11_FieldSource {
public:
    virtual ~IEEE802_11_FieldSource() = default;

    /// Whether there is a field of this name; only for fields that an element may lack.
    virtual bool has(std::string_view name) = 0;
    /// A number of at most `bits` bits, as the air means it.
    virtual std::uint64_t number(std::string_view name, unsigned bits) = 0;
    virtual std::string text(std::string_view name) = 0;
    virtual std::vector<std::uint8_t> octets(std::string_view name) = 0;
    /// Returns the number of entries.
    virtual std::size_t open_list(std::string_view name) = 0;
    virtual void close_list() = 0;
    virtual void open_object(std::string_view name) = 0;
    virtual void close_object() = 0;
    /// Number of fields of the object that is open.
    virtual std::size_t size() = 0;

    /// Throws an exception of the source's own kind that says `message` of the field asked for last.
    [[noreturn]] virtual void fail(std::string_view message) = 0;
    /// Takes note of something about the field asked for last that is no failure. Ignores it unless
    /// overridden.
    virtual void note(std::string_view /*message*/) {}

protected:
    IEEE802_11_FieldSource() = default;
    IEEE802_11_FieldSource(const IEEE802_11_FieldSource&) = default;
    IEEE802_11_FieldSource& operator=(const IEEE802_11_FieldSource&) = default;
};

}  // namespace nuv::ieee802_11
