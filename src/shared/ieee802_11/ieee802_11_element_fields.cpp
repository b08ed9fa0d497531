// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_element_fields.hpp"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "internal/byte_cursor.hpp"
#include "internal/ieee802_11/element_body.hpp"
#include "internal/ieee802_11/element_sequence.hpp"
#include "nuv/ieee802_11/ieee802_11_field_source.hpp"
#include "nuv/ieee802_11/ieee802_11_field_visitor.hpp"
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"

namespace nuv::impl {

using serialization::SerializationContext;
using serialization::SerializationException;

std::vector<std::uint8_t> written_with_real_length(const IEEE802_11_Element_Base& element) {
    constexpr std::size_t header = 2;
    std::ostringstream os;
    SerializationContext ctx;
    element.serialize_impl(os, ctx);
    const std::string_view written = os.view();
    std::vector<std::uint8_t> octets(written.begin(), written.end());
    if (octets.size() - header <= max_content) {
        octets[1] = static_cast<std::uint8_t>(octets.size() - header);
    } else if (octets.size() > element.get_length()) {
        // The Length octet of a report wraps.
        throw SerializationException("more than an element holds");
    }
    return octets;
}

void read_whole(IEEE802_11_Element_Base& element, std::span<const std::uint8_t> octets) {
    SerializationContext ctx;
    ByteCursor source(octets);
    element.deserialize_from(source, ctx);
    if (source.remaining() != 0) {
        throw SerializationException("more than an element holds");
    }
}

}  // namespace nuv::impl

namespace nuv::ieee802_11 {

using serialization::SerializationException;
using Element = IEEE802_11_Element_Base;
using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;

namespace {

constexpr std::string_view body_name = "body_hex";
constexpr std::size_t header_length = 2;

bool is_written_as(const Element& element, std::span<const std::uint8_t> octets) {
    try {
        return std::ranges::equal(impl::written_with_real_length(element), octets);
    } catch (const SerializationException&) {
        return false;
    }
}

bool is_read_from(const Element& element, Element& other, std::span<const std::uint8_t> octets) {
    try {
        impl::read_whole(other, octets);
        return other == element;
    } catch (const SerializationException&) {
        return false;
    }
}

/// A Multi-Link element of another type than Basic has a field of this name itself.
bool has_body_field(const Element& element) {
    const auto* multi_link = dynamic_cast<const IEEE802_11_MultiLink*>(&element);
    return multi_link != nullptr && !multi_link->is_basic();
}

/// Puts the header before a body, which may be more than the Length octet can say.
std::vector<std::uint8_t> with_header(ID id, Ext extension, const std::vector<std::uint8_t>& body) {
    std::vector<std::uint8_t> octets{static_cast<std::uint8_t>(id), 0};
    if (id == ID::ELEMENT_ID_EXTENSION) {
        octets.push_back(static_cast<std::uint8_t>(extension));
    }
    octets.insert(octets.end(), body.begin(), body.end());
    octets[1] = static_cast<std::uint8_t>(
        std::min<std::size_t>(octets.size() - header_length, impl::max_content));
    return octets;
}

}  // namespace

void visit_element(IEEE802_11_FieldVisitor& visitor, const Element& element,
                   std::span<const std::uint8_t> octets) {
    visitor.open_object("fields");
    if (!element.is_dummy()) {
        element.visit_fields(visitor);
    }
    if (element.is_dummy() || !is_written_as(element, octets)) {
        const bool extended = element.get_type() == ID::ELEMENT_ID_EXTENSION;
        visitor.octets(body_name, octets.subspan(header_length + (extended ? 1 : 0)));
    }
    visitor.close_object();
}

std::vector<std::uint8_t> assign_element(IEEE802_11_FieldSource& source, ID id, Ext extension,
                                         const std::function<std::unique_ptr<Element>()>& make) {
    std::vector<std::uint8_t> octets;
    try {
        source.open_object("fields");
        bool has_body = source.has(body_name);
        const auto element = has_body && source.size() == 1 ? nullptr : make();
        const bool is_raw = element == nullptr || element->is_dummy();
        if (!is_raw) {
            element->assign_fields(source);
            has_body = has_body && !has_body_field(*element);
        }
        if (is_raw || has_body) {
            octets = with_header(id, extension, source.octets(body_name));
        }
        if (is_raw && octets.size() > header_length + impl::max_content) {
            source.fail("more than an element holds");
        }
        source.close_object();
        if (is_raw || (has_body && is_read_from(*element, *make(), octets))) {
            return octets;
        }
        if (has_body) {
            source.note("body_hex does not agree with the other fields and is not written");
        }
        octets = impl::written_with_real_length(*element);
    } catch (const SerializationException& e) {
        source.fail(e.what());
    }
    return octets;
}

}  // namespace nuv::ieee802_11
