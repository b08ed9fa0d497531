// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"

#include <algorithm>
#include <istream>
#include <ostream>
#include <string>

#include "internal/byte_cursor.hpp"
#include "internal/ieee802_11/element_factory.hpp"
#include "internal/log_module.hpp"
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"

namespace nuv::ieee802_11 {

using serialization::BinarySerializableType;
using serialization::SerializationContext;
using serialization::SerializationException;

namespace {

constinit impl::LogModule log_module{"assoc_request_frame",
                                     "src/shared/ieee802_11/ieee802_11_assoc_request_frame"};

using Container = AssocRequestFrame::ElementContainer;
using Ptr = Container::ElementPtr;
using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;

using Held = Container::HeldPtr;

bool equal(const Held& a, const Held& b) {
    return a == nullptr || b == nullptr ? a == b : *a == *b;
}

bool equal(Container::ElementList a, Container::ElementList b) {
    return std::ranges::equal(a, b, [](const Held& x, const Held& y) { return equal(x, y); });
}

/// Calls `function` with each element held, in the order in which they are written.
template <class Slots, class Function>
void for_each_element(const Slots& slots, const Container& container, Function function) {
    for (const Held& element : slots) {
        if (element != nullptr) {
            function(*element);
        }
    }
    for (const auto list : {container.get_vendor_specific_vector(), container.get_ttlm_vector()}) {
        for (const Held& element : list) {
            function(*element);
        }
    }
}

void read_element(IEEE802_11_Element_Base& element, std::istream& source,
                  SerializationContext& ctx) {
    element.deserialize_impl(source, ctx);
}
void read_element(IEEE802_11_Element_Base& element, impl::ByteCursor& source,
                  SerializationContext& ctx) {
    element.deserialize_from(source, ctx);
}

}  // namespace

std::size_t Container::map_element_id_to_member(ID id) {
    return factory::slot_of(id, Ext::NO_EXTENSION);
}

std::size_t Container::map_extended_element_id_to_member(Ext extension) {
    return factory::slot_of(ID::ELEMENT_ID_EXTENSION, extension);
}

Ptr Container::create_element(ID id) {
    if (id == ID::ELEMENT_ID_EXTENSION) {
        throw SerializationException("create_element() cannot handle ELEMENT_ID_EXTENSION!");
    }
    return factory::make_element(id, Ext::NO_EXTENSION, nullptr);
}

Ptr Container::create_extended_element(Ext extension) const {
    if (extension != Ext::EHT_CAPABILITIES && extension != Ext::MULTI_LINK) {
        return factory::make_element(ID::ELEMENT_ID_EXTENSION, extension, nullptr);
    }
    const auto* he = get_optional_element<IEEE802_11_HECapabilities>();
    if (he != nullptr) {
        const IEEE802_11_EHTMaps maps = factory::eht_maps(*he);
        return factory::make_element(ID::ELEMENT_ID_EXTENSION, extension, &maps);
    }
    if (extension == Ext::EHT_CAPABILITIES) {
        constexpr const char* text = "EHT CAPABILITIES IE without preceding HE CAPABILITIES IE";
        NUV_LOG(log_module, error) << text;
        throw SerializationException(text);
    }
    return factory::make_element(ID::ELEMENT_ID_EXTENSION, extension, nullptr);
}

template <std::size_t N>
void Container::append(BoundedList<N>& list, Ptr element, const char* kind) {
    if (list.full()) {
        NUV_LOG(log_module, warn) << "Number of " << kind
                                  << " elements in AssocRequest exceeds limit of " << N
                                  << ". Element not added!";
        return;
    }
    list.push_back(std::move(element));
}

void Container::add_element(ElementPtr element) {
    const ID id = element->get_type();
    const Ext extension = element->get_extension_type();
    place(id, extension, std::move(element));
}

void Container::place(ID id, Ext extension, ElementPtr element) {
    if (id == ID::VENDOR_SPECIFIC) {
        append(vendor_specific_, std::move(element), "vendor");
    } else if (id == ID::ELEMENT_ID_EXTENSION && extension == Ext::TID_TO_LINK_MAPPING) {
        append(ttlm_, std::move(element), "TTLM");
    } else if (const std::size_t slot = factory::slot_of(id, extension); slot < slots_.size()) {
        slots_[slot] = std::move(element);
    }
}

const IEEE802_11_Element_Base* Container::get_optional_element_by_id(ID id) const {
    const std::size_t slot = map_element_id_to_member(id);
    return slot < slots_.size() ? slots_[slot].get() : nullptr;
}

const IEEE802_11_Element_Base* Container::get_optional_element_by_extended_id(Ext extension) const {
    const std::size_t slot = map_extended_element_id_to_member(extension);
    return slot < slots_.size() ? slots_[slot].get() : nullptr;
}

void Container::clear() {
    std::ranges::for_each(slots_, [](HeldPtr& element) { element.reset(); });
    vendor_specific_.clear();
    ttlm_.clear();
}

template <class Source>
void Container::read_from(Source& source, SerializationContext& ctx) {
    clear();
    for (int octet = impl::peek(source); source.good(); octet = impl::peek(source)) {
        const auto id = static_cast<ID>(octet);
        auto extension = Ext::NO_EXTENSION;
        ElementPtr element;
        if (id == ID::ELEMENT_ID_EXTENSION) {
            impl::skip(source, 2);
            extension = static_cast<Ext>(impl::peek(source));
            if (!source.good()) {
                NUV_LOG(log_module, error)
                    << "Error reading extended element ID. f: " << source.fail()
                    << " b: " << source.bad() << " e: " << source.eof();
                throw SerializationException("Error reading extended element ID!");
            }
            impl::skip(source, -2);
            element = create_extended_element(extension);
        } else {
            element = create_element(id);
        }
        read_element(*element, source, ctx);
        place(id, extension, std::move(element));
    }
}

void Container::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

void Container::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    for_each_element(slots_, *this, [&](const IEEE802_11_Element_Base& element) {
        element.serialize_impl(os, ctx);
    });
}

std::uint32_t Container::get_length() const {
    std::uint32_t length = 0;
    for_each_element(slots_, *this, [&](const IEEE802_11_Element_Base& element) {
        length += element.get_length();
    });
    return length;
}

bool Container::operator==(const ElementContainer& other) const {
    return equal(slots_, other.slots_) &&
           equal(get_vendor_specific_vector(), other.get_vendor_specific_vector()) &&
           equal(get_ttlm_vector(), other.get_ttlm_vector());
}

template <class Source>
void AssocRequestFrame::read_from(Source& source, SerializationContext& ctx) {
    impl::read_value(source, ctx, capability_information_);
    impl::read_value(source, ctx, listen_interval_);

    ID id{};
    std::uint8_t length = 0;
    impl::read_value(source, ctx, id);
    impl::read_value(source, ctx, length);
    // Whatever is wrong with it, the message names the Length.
    if (id != ID::SSID || length > SSID::capacity()) {
        throw SerializationException("Invalid SSID length " + std::to_string(length));
    }
    ssid_.resize(length);
    impl::read_octets(source, {ssid_.data(), ssid_.size()});

    optional_elements_.read_from(source, ctx);
}

void AssocRequestFrame::deserialize_impl(std::istream& is, SerializationContext& ctx) {
    read_from(is, ctx);
}

std::ios_base::iostate AssocRequestFrame::deserialize(std::span<const std::uint8_t> bytes,
                                                      SerializationContext& ctx) {
    impl::ByteCursor source(bytes);
    read_from(source, ctx);
    return source.rdstate();
}

void AssocRequestFrame::serialize_impl(std::ostream& os, SerializationContext& ctx) const {
    using Octet = BinarySerializableType<std::uint8_t>;
    BinarySerializableType<CapabilityInformation>::serialize(os, ctx, capability_information_);
    BinarySerializableType<std::uint16_t>::serialize(os, ctx, listen_interval_);
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(ID::SSID));
    Octet::serialize(os, ctx, static_cast<std::uint8_t>(ssid_.size()));
    BinarySerializableType<std::span<const std::uint8_t>>::serialize(os, ctx, ssid_.span());
    optional_elements_.serialize_impl(os, ctx);
}

std::uint32_t AssocRequestFrame::get_length() const {
    return static_cast<std::uint32_t>(CAPABILITY_INFORMATION_LEN + sizeof listen_interval_ + 2) +
           ssid_.size() + optional_elements_.get_length();
}

bool AssocRequestFrame::operator==(const AssocRequestFrame& other) const {
    return capability_information_ == other.capability_information_ &&
           listen_interval_ == other.listen_interval_ && ssid_ == other.ssid_ &&
           optional_elements_ == other.optional_elements_;
}

}  // namespace nuv::ieee802_11
