// SPDX-License-Identifier: Apache-2.0
#include "association_request.hpp"

#include <algorithm>
#include <array>

#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"
#include "nuv/ieee802_11/ieee802_11_he_capabilities.hpp"

namespace nuvctl {

namespace {

using nuv::ieee802_11::AssocRequestFrame;
using nuv::ieee802_11::IEEE802_11_HECapabilities;
using nuv::serialization::SerializationContext;
using nuv::serialization::SerializationException;
using ID = nuv::ieee802_11::IEEE802_11_Element_ID;
using Ext = nuv::ieee802_11::IEEE802_11_Element_ID_Extension;
using Octets = std::span<const std::uint8_t>;

constexpr std::size_t fixed_fields = 4;  // capability information, listen interval
constexpr std::size_t address_length = 6;

std::uint16_t little_endian_16(Octets octets) {
    return static_cast<std::uint16_t>(octets[0] | octets[1] << 8U);
}

nuv::MACAddress address(Octets octets) {
    std::array<std::uint8_t, address_length> value{};
    std::copy_n(octets.begin(), value.size(), value.begin());
    return nuv::MACAddress(value);
}

/// Where the body begins; none for another frame than a (re)association request.
std::optional<std::size_t> body_offset(Octets frame) {
    constexpr std::size_t mac_header = 24;
    constexpr std::uint8_t association = 0x00;
    constexpr std::uint8_t reassociation = 0x20;
    constexpr std::uint8_t protected_frame = 0x40;
    constexpr std::uint8_t order = 0x80;
    constexpr std::uint8_t fragment_number = 0x0F;
    constexpr std::size_t ht_control = 4;
    if (frame.size() < mac_header || (frame[0] != association && frame[0] != reassociation)) {
        return std::nullopt;
    }
    // An encrypted body and a later fragment do not begin with what a request begins with.
    if ((frame[1] & protected_frame) != 0 || (frame[22] & fragment_number) != 0) {
        return std::nullopt;
    }
    const std::size_t offset = mac_header + ((frame[1] & order) != 0 ? ht_control : 0);
    return offset <= frame.size() ? std::optional(offset) : std::nullopt;
}

/// Reads the elements one by one, as the frame's class does, but goes on behind one that fails.
class ElementWalk {
public:
    /// `taken_out` octets of the body as sent are missing in `body` before the elements.
    ElementWalk(Octets body, std::size_t taken_out) : body_(body), taken_out_(taken_out) {}

    std::vector<Element> run() {
        std::vector<Element> elements;
        for (std::size_t at = fixed_fields; at < body_.size();) {
            Element element = read(body_.subspan(at));
            element.offset = at + taken_out_;
            at += std::size_t{2} + element.length.value_or(0);
            elements.push_back(std::move(element));
        }
        return elements;
    }

private:
    Element read(Octets rest) {
        Element element{rest[0], {}, 0, {}, {}, {}, {}};
        if (rest.size() > 1) {
            element.length = rest[1];
            element.body = rest.subspan(2, std::min<std::size_t>(rest[1], rest.size() - 2));
        }
        const bool extended = static_cast<ID>(element.id) == ID::ELEMENT_ID_EXTENSION;
        if (extended && !element.body.empty()) {
            element.extension = element.body[0];
            element.body = element.body.subspan(1);
        }
        try {
            if (extended && rest.size() < 3) {
                throw SerializationException("Error reading extended element ID!");
            }
            auto typed = extended ? known_.create_extended_element(static_cast<Ext>(rest[2]))
                                  : known_.create_element(static_cast<ID>(element.id));
            typed->deserialize(rest, context_);
            remember(*typed);
            element.typed = std::move(typed);
        } catch (const SerializationException& e) {
            element.error = e.what();
        }
        return element;
    }

    /// The HE Capabilities give the EHT Capabilities behind them their shape.
    void remember(const nuv::ieee802_11::IEEE802_11_Element_Base& element) {
        if (const auto* he = dynamic_cast<const IEEE802_11_HECapabilities*>(&element)) {
            known_.add_element(std::make_unique<IEEE802_11_HECapabilities>(*he));
        }
    }

    Octets body_;
    std::size_t taken_out_;
    AssocRequestFrame::ElementContainer known_;
    SerializationContext context_;
};

/// What the library says of the whole body.
std::optional<FrameError> read_whole(Octets body, const std::vector<Element>& elements) {
    std::optional<FrameError> error;
    AssocRequestFrame frame;
    SerializationContext context;
    try {
        if ((frame.deserialize(body, context) & std::ios_base::failbit) != 0) {
            return FrameError{"trailing element truncated", elements.size() - 1};
        }
        return std::nullopt;
    } catch (const SerializationException& e) {
        error = FrameError{e.what(), {}};
    }
    if (elements.empty()) {
        return error;
    }
    // The SSID is the frame's own; the elements behind it fail one by one as they do here.
    const Element& ssid = elements.front();
    const bool ssid_is_there = static_cast<ID>(ssid.id) == ID::SSID && ssid.length &&
                               *ssid.length <= nuv::SSID::capacity() &&
                               ssid.body.size() == *ssid.length;
    const auto failed = std::ranges::find_if(elements.begin() + 1, elements.end(),
                                             [](const Element& e) { return !e.error.empty(); });
    error->element = !ssid_is_there ? std::optional<std::size_t>(0)
                     : failed != elements.end()
                         ? std::optional(static_cast<std::size_t>(failed - elements.begin()))
                         : std::nullopt;
    return error;
}

}  // namespace

bool AssociationRequest::has(ID id) const {
    return std::ranges::any_of(
        elements, [id](const Element& e) { return e.id == static_cast<std::uint8_t>(id); });
}

bool AssociationRequest::has(Ext extension) const {
    return std::ranges::any_of(elements, [extension](const Element& e) {
        return e.extension == static_cast<std::uint8_t>(extension);
    });
}

std::optional<AssociationRequest> association_request(const MacFrame& frame) {
    const auto offset = body_offset(frame.octets);
    if (!offset) {
        return std::nullopt;
    }
    AssociationRequest request;
    request.reassociation = frame.octets[0] != 0;
    request.station = address(frame.octets.subspan(10));
    request.bssid = address(frame.octets.subspan(16));

    const Octets body = frame.octets.subspan(*offset);
    if (body.size() >= fixed_fields) {
        request.capability_information = little_endian_16(body);
        request.listen_interval = little_endian_16(body.subspan(2));
    }
    // The library knows the frame without the current AP's address.
    std::vector<std::uint8_t> without_address(body.begin(), body.end());
    if (request.reassociation && body.size() >= fixed_fields) {
        if (body.size() >= fixed_fields + address_length) {
            request.current_ap = address(body.subspan(fixed_fields));
        }
        const auto begin = without_address.begin() + fixed_fields;
        without_address.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(
                                                 address_length, body.size() - fixed_fields)));
    }
    const std::size_t taken_out = body.size() - without_address.size();
    request.elements = ElementWalk(without_address, taken_out).run();
    request.error = read_whole(without_address, request.elements);
    // What is shown of them lies in the frame, which lives longer than the copy.
    for (Element& element : request.elements) {
        const std::size_t header = element.extension ? 3 : 2;
        if (!element.body.empty()) {
            element.body = body.subspan(element.offset + header, element.body.size());
        }
    }
    if (!request.elements.empty() && static_cast<ID>(request.elements[0].id) == ID::SSID) {
        Element& ssid = request.elements[0];
        request.ssid = ssid.body;
        if (request.error && request.error->element == 0) {
            ssid.typed.reset();
            ssid.error = request.error->message;
        }
    }
    return request;
}

}  // namespace nuvctl
