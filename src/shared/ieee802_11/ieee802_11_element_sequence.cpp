// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_element_sequence.hpp"

#include <stdexcept>
#include <utility>

#include "internal/ieee802_11/element_layout.hpp"
#include "internal/ieee802_11/element_sequence.hpp"
#include "nuv/ieee802_11/ieee802_11_element_fields.hpp"

namespace nuv::ieee802_11 {

std::span<const std::uint8_t> IEEE802_11_ElementSequence::octets_of(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : items_[index - 1].end;
    return std::span(octets_.data(), octets_.size()).subspan(begin, items_[index].end - begin);
}

void IEEE802_11_ElementSequence::add_element(ElementPtr element) {
    if (element == nullptr) {
        throw std::invalid_argument("An element of a sequence is null");
    }
    const auto octets = impl::written_with_real_length(*element);
    add_element(std::move(element), octets);
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
                    const IEEE802_11_ElementSequence& sequence, ElementName name_of) {
    visitor.open_list(name);
    for (std::size_t k = 0; k < sequence.size(); ++k) {
        const IEEE802_11_Element_Base& element = sequence[k];
        const auto id = element.get_type();
        const auto extension = element.get_extension_type();
        visitor.open_object({});
        visitor.number("id", static_cast<std::uint8_t>(id));
        if (id == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION) {
            visitor.number("extension", static_cast<std::uint8_t>(extension));
        }
        layout::visit_meaning(visitor, "name", name_of(id, extension));
        visit_element(visitor, element, sequence.octets_of(k));
        visitor.close_object();
    }
    visitor.close_list();
}

void assign_sequence(IEEE802_11_FieldSource& source, std::string_view name,
                     const ElementMaker& make, IEEE802_11_ElementSequence& sequence) {
    sequence.clear();
    for (std::size_t count = source.open_list(name); count > 0; --count) {
        source.open_object({});
        const auto id = static_cast<IEEE802_11_Element_ID>(source.number("id", 8));
        const auto extension =
            id == IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION
                ? static_cast<IEEE802_11_Element_ID_Extension>(source.number("extension", 8))
                : IEEE802_11_Element_ID_Extension::NO_EXTENSION;
        layout::skip_meaning(source, "name");
        const auto make_one = [&] { return make(id, extension); };
        const auto octets = assign_element(source, id, extension, make_one);
        try {
            auto element = make_one();
            read_whole(*element, octets);
            sequence.add_element(std::move(element), octets);
        } catch (const serialization::SerializationException& e) {
            source.fail(e.what());
        }
        source.close_object();
    }
    source.close_list();
}

}  // namespace nuv::impl
