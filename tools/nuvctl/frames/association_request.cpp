// SPDX-License-Identifier: Apache-2.0
#include "frames/association_request.hpp"

#include <algorithm>

#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"

namespace nuvctl {

namespace {

using nuv::ieee802_11::AssocRequestFrame;
using nuv::serialization::SerializationContext;
using nuv::serialization::SerializationException;
using ID = nuv::ieee802_11::IEEE802_11_Element_ID;
using Ext = nuv::ieee802_11::IEEE802_11_Element_ID_Extension;

constexpr std::size_t fixed_fields = 4;  // capability information, listen interval

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

std::optional<AssociationRequest> association_request(const ManagementFrame& frame) {
    const bool reassociation = frame.subtype == Subtype::REASSOCIATION_REQUEST;
    if (!reassociation && frame.subtype != Subtype::ASSOCIATION_REQUEST) {
        return std::nullopt;
    }
    AssociationRequest request;
    request.type =
        reassociation ? AssociationRequest::reassociation : AssociationRequest::association;
    request.station = frame.transmitter;
    request.bssid = frame.bssid;

    const Octets body = frame.body;
    if (body.size() >= fixed_fields) {
        request.capability_information = static_cast<std::uint16_t>(*little_endian(body, 0, 2));
        request.listen_interval = static_cast<std::uint16_t>(*little_endian(body, 2, 2));
    }
    std::size_t elements_begin = fixed_fields;
    if (reassociation) {
        elements_begin += mac_address_length;
        if (body.size() >= elements_begin) {
            request.current_ap = address_in(body.subspan(fixed_fields));
        }
    }
    ElementMaker maker(ElementMaker::Frame::REQUEST);
    request.elements = read_elements(body, elements_begin, maker);
    // The library knows the frame without the current AP's address.
    std::vector<std::uint8_t> without_address(body.begin(), body.end());
    const auto place = [&](std::size_t at) {
        return without_address.begin() + static_cast<std::ptrdiff_t>(std::min(at, body.size()));
    };
    without_address.erase(place(fixed_fields), place(elements_begin));
    request.error = read_whole(without_address, request.elements);
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
