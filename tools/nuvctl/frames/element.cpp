// SPDX-License-Identifier: Apache-2.0
#include "frames/element.hpp"

#include <algorithm>

#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_measurement_report.hpp"
#include "nuv/ieee802_11/ieee802_11_neighbor_report.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuvctl {

using nuv::ieee802_11::IEEE802_11_HECapabilities;
using nuv::ieee802_11::IEEE802_11_MultiLink;
using nuv::serialization::SerializationContext;
using nuv::serialization::SerializationException;
using ID = nuv::ieee802_11::IEEE802_11_Element_ID;
using Ext = nuv::ieee802_11::IEEE802_11_Element_ID_Extension;

namespace {

Element read_element(Octets rest, ElementMaker& maker) {
    Element element{rest[0], {}, 0, {}, {}, {}, {}, {}, {}};
    if (rest.size() > 1) {
        element.length = rest[1];
        element.body = rest.subspan(2, std::min<std::size_t>(rest[1], rest.size() - 2));
    }
    const bool extended = static_cast<ID>(element.id) == ID::ELEMENT_ID_EXTENSION;
    if (extended && !element.body.empty()) {
        element.extension = element.body[0];
        element.body = element.body.subspan(1);
    }
    ElementMaker::ElementPtr typed;
    try {
        if (extended && rest.size() < 3) {
            throw SerializationException("Error reading extended element ID!");
        }
        typed = maker.make(element.id, extended ? rest[2] : 0);
        maker.read(*typed, rest);
        element.typed = std::move(typed);
        if (element.is_cut_short()) {
            element.error = "trailing element truncated";
        }
    } catch (const SerializationException& e) {
        element.error = e.what();
        if (const auto* multi_link = dynamic_cast<const IEEE802_11_MultiLink*>(typed.get())) {
            element.link = failed_link(*multi_link, rest);
        }
    }
    return element;
}

}  // namespace

ElementMaker::ElementPtr ElementMaker::make(std::uint8_t id, std::uint8_t extension) const {
    if (frame_ == Frame::REPORT && static_cast<ID>(id) == ID::MEASUREMENT_REPORT) {
        return std::make_unique<nuv::ieee802_11::IEEE802_11_MeasurementReport>();
    }
    if (frame_ == Frame::REPORT && static_cast<ID>(id) == ID::NEIGHBOR_REPORT) {
        return std::make_unique<nuv::ieee802_11::IEEE802_11_NeighborReport>();
    }
    return static_cast<ID>(id) == ID::ELEMENT_ID_EXTENSION
               ? known_.create_extended_element(static_cast<Ext>(extension))
               : known_.create_element(static_cast<ID>(id));
}

void ElementMaker::read(nuv::ieee802_11::IEEE802_11_Element_Base& element, Octets octets) {
    SerializationContext context;
    element.deserialize(octets, context);
    remember(element);
}

void ElementMaker::remember(const nuv::ieee802_11::IEEE802_11_Element_Base& element) {
    // The HE Capabilities give the EHT Capabilities behind them their shape.
    if (const auto* he = dynamic_cast<const IEEE802_11_HECapabilities*>(&element)) {
        known_.add_element(std::make_unique<IEEE802_11_HECapabilities>(*he));
    }
}

std::vector<Element> read_elements(Octets body, std::size_t begin, ElementMaker& maker) {
    constexpr std::size_t header = 2;
    constexpr std::size_t max_length = 255;
    std::vector<Element> elements;
    for (std::size_t at = begin; at < body.size();) {
        Element element = read_element(body.subspan(at), maker);
        element.offset = at;
        if (element.link) {
            element.link->offset += at;
            if (element.link->element) {
                element.link->element->offset += at;
            }
        }
        std::size_t size = header + element.length.value_or(0);
        // What was put together of this element and the fragments behind it is one element.
        if (element.typed != nullptr && element.typed->get_length() > header + max_length) {
            size = element.typed->get_length();
        }
        element.octets = body.subspan(at, std::min(size, body.size() - at));
        at += size;
        elements.push_back(std::move(element));
    }
    return elements;
}

}  // namespace nuvctl
