// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_element_sequence.hpp"

#include <sstream>
#include <stdexcept>
#include <utility>

#include "internal/ieee802_11/element_body.hpp"
#include "internal/ieee802_11/element_sequence.hpp"
#include "nuv/ieee802_11/ieee802_11_field_visitor.hpp"

namespace nuv::ieee802_11 {

using serialization::SerializationContext;

std::span<const std::uint8_t> IEEE802_11_ElementSequence::octets_of(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : items_[index - 1].end;
    return std::span(octets_.data(), octets_.size()).subspan(begin, items_[index].end - begin);
}

void IEEE802_11_ElementSequence::add_element(ElementPtr element) {
    if (element == nullptr) {
        throw std::invalid_argument("An element of a sequence is null");
    }
    std::ostringstream os;
    SerializationContext ctx;
    element->serialize_impl(os, ctx);
    const std::string_view written = os.view();
    add_element(std::move(element),
                {reinterpret_cast<const std::uint8_t*>(written.data()), written.size()});
}

void IEEE802_11_ElementSequence::add_element(ElementPtr element,
                                             std::span<const std::uint8_t> octets) {
    octets_.append(octets.begin(), octets.end());
    items_.push_back({std::move(element), static_cast<std::uint32_t>(octets_.size())});
}

void IEEE802_11_ElementSequence::clear() {
    items_.clear();
    octets_.clear();
}

}  // namespace nuv::ieee802_11

namespace nuv::impl {

void visit_sequence(IEEE802_11_FieldVisitor& visitor, std::string_view name,
                    const IEEE802_11_ElementSequence& sequence) {
    visitor.open_list(name);
    for (std::size_t k = 0; k < sequence.size(); ++k) {
        const IEEE802_11_Element_Base& element = sequence[k];
        const bool extended = element.get_type() == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION;
        visitor.open_object({});
        visitor.number("id", static_cast<std::uint8_t>(element.get_type()));
        if (extended) {
            visitor.number("extension", static_cast<std::uint8_t>(element.get_extension_type()));
        }
        visitor.open_object("fields");
        if (element.is_dummy()) {
            visitor.octets("body_hex", sequence.octets_of(k).subspan(extended ? 3 : 2));
        } else {
            element.visit_fields(visitor);
        }
        visitor.close_object();
        visitor.close_object();
    }
    visitor.close_list();
}

void assign_element(IEEE802_11_FieldSource& source,
                    std::unique_ptr<IEEE802_11_Element_Base> element,
                    IEEE802_11_Element_ID_Extension extension,
                    IEEE802_11_ElementSequence& sequence) {
    try {
        if (!element->is_dummy() && !source.has("body_hex")) {
            element->assign_fields(source);
            sequence.add_element(std::move(element));
            return;
        }
        std::vector<std::uint8_t> content = source.octets("body_hex");
        if (element->get_type() == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION) {
            content.insert(content.begin(), static_cast<std::uint8_t>(extension));
        }
        if (content.size() > impl::max_content) {
            source.fail("more than 255 octets");
        }
        content.insert(content.begin(), {static_cast<std::uint8_t>(element->get_type()),
                                         static_cast<std::uint8_t>(content.size())});
        SerializationContext ctx;
        element->deserialize(content, ctx);
        sequence.add_element(std::move(element), content);
    } catch (const serialization::SerializationException& e) {
        source.fail(e.what());
    }
}

}  // namespace nuv::impl
